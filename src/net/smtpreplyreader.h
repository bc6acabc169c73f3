#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

struct SmtpReply {
    int code = 0; ///< 0 when the line does not begin with a number
    QString line; ///< all of it, as received, without CR LF
};

/// Takes a mail server's bytes in whatever pieces they come and gives its final reply lines (RFC 5321, 4.2). Never
/// holds more than one line and the latest piece.
class SmtpReplyReader {
public:
    /// \param maxLine bytes of a line that are kept, the rest of it is dropped. RFC 5321 allows servers 512.
    explicit SmtpReplyReader(qsizetype maxLine = qsizetype(64) * 1024) : m_maxLine(maxLine) {}

    void append(const QByteArray& bytes);
    /// The next final line, nothing when none is complete. Call until it gives nothing, or what is held is not cut.
    std::optional<SmtpReply> next();

    /// Whether a continuation line said STARTTLS. Only recorded: encryption is the setting's decision, never the
    /// server's, or somebody in between could switch it off.
    bool startTlsAdvertised() const { return m_startTls; }
    /// Bytes held of a line that is not complete.
    qsizetype held() const { return m_buffer.size(); }

private:
    void dropFinished();

    qsizetype m_maxLine;
    QByteArray m_buffer;
    qsizetype m_begin = 0; ///< of the line that comes next
    qsizetype m_search = 0; ///< where its end is looked for
    bool m_startTls = false;
};
