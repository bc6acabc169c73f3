#include "net/smtpreplyreader.h"

#include <algorithm>

void SmtpReplyReader::append(const QByteArray& bytes)
{
    m_buffer += bytes;
}

std::optional<SmtpReply> SmtpReplyReader::next()
{
    for (qsizetype end; (end = m_buffer.indexOf("\r\n", m_search)) >= 0;) {
        // Decoded as a whole line: a character may have come in two pieces.
        const QString line = QString::fromUtf8(m_buffer.constData() + m_begin, std::min(end - m_begin, m_maxLine));
        m_begin = m_search = end + 2;
        // A bare code is no reply: every server that is meant puts a blank or a text behind it.
        if (line.size() < 4)
            continue;
        if (line.at(3) != u'-')
            return SmtpReply{QStringView(line).first(3).toInt(), line};
        if (QStringView(line).sliced(4).startsWith(QLatin1String("STARTTLS"), Qt::CaseInsensitive))
            m_startTls = true;
    }
    dropFinished();
    return std::nullopt;
}

void SmtpReplyReader::dropFinished()
{
    m_buffer.remove(0, m_begin);
    m_begin = 0;
    // Half of the line's end may be here already.
    const bool endsWithCr = m_buffer.endsWith('\r');
    if (m_buffer.size() > m_maxLine) {
        m_buffer.truncate(m_maxLine);
        if (endsWithCr)
            m_buffer += '\r';
    }
    m_search = m_buffer.size() - (endsWithCr ? 1 : 0);
}
