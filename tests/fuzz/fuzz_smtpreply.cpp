#include "net/smtpdialogue.h"
#include "net/smtpreplyreader.h"

#include <QDateTime>

namespace {

using SmtpDialogue::State;

void require(bool condition)
{
    if (!condition)
        __builtin_trap();
}

/// The replies in these bytes when they come in pieces of one size.
QStringList replies(const QByteArray& bytes, qsizetype piece, qsizetype maxLine)
{
    SmtpReplyReader reader(maxLine);
    QStringList lines;
    for (qsizetype at = 0; at < bytes.size(); at += piece) {
        reader.append(bytes.mid(at, piece));
        while (const auto reply = reader.next())
            lines += QString::number(reply->code) + u':' + reply->line;
        require(reader.held() <= maxLine + 1);
    }
    lines += QString::number(int(reader.startTlsAdvertised()));
    return lines;
}

} // namespace

/// Pieces make no difference, a dialogue only goes forward, and no text gets a line break onto the wire.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    if (size < 2)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char*>(data) + 2, qsizetype(size) - 2);
    const qsizetype maxLine = 4 + data[1] % 32;
    require(replies(bytes, 1 + data[0] % 16, maxLine) == replies(bytes, bytes.size() + 1, maxLine));

    const QString text = QString::fromUtf8(bytes);
    const SmtpConfig config{
        text, (data[0] & 1) != 0 ? 465 : 587, (data[0] & 2) != 0 ? text : QString(), text, text, (data[0] & 4) != 0};
    const SmtpMail mail{text, text, text};
    SmtpReplyReader reader;
    reader.append(bytes);
    State state = State::Greeting;
    for (auto reply = reader.next(); reply && state != State::Finished; reply = reader.next()) {
        require(!SmtpDialogue::withoutPassword(reply->line, text).isNull());
        const auto next = SmtpDialogue::next(state, reply->code, config, state >= State::EhloOverTls);
        if (!next)
            break;
        require(*next > state);
        state = *next;
    }
    for (int s = int(State::Greeting); s <= int(State::Finished); ++s) {
        const QByteArray command = SmtpDialogue::command(State(s), config, mail, text, QDateTime());
        if (State(s) != State::Message)
            require(!command.contains('\r') && !command.contains('\n'));
        else
            require(command.left(command.indexOf("\r\n\r\n")).count('\n') == 5);
    }
    return 0;
}
