#include "net/smtpdialogue.h"

#include <QDateTime>
#include <QRegularExpression>

#include <algorithm>
#include <iterator>

namespace {

using SmtpDialogue::State;

using Condition = bool (*)(const SmtpConfig& config, bool encrypted);

bool always(const SmtpConfig&, bool)
{
    return true;
}

bool logsIn(const SmtpConfig& config, bool)
{
    return !config.user.isEmpty();
}

bool mustStartTls(const SmtpConfig& config, bool encrypted)
{
    return config.tls && !SmtpDialogue::implicitTls(config) && !encrypted;
}

constexpr int AnyCode = -1;

/// The first row that fits decides.
struct {
    State state;
    int code;
    Condition condition;
    State next;
} const steps[] = {
    {State::Greeting, 220, always, State::Ehlo},        {State::Ehlo, 250, mustStartTls, State::StartTls},
    {State::Ehlo, 250, logsIn, State::AuthLogin},       {State::Ehlo, 250, always, State::MailFrom},
    {State::StartTls, 220, always, State::EhloOverTls}, {State::EhloOverTls, 250, logsIn, State::AuthLogin},
    {State::EhloOverTls, 250, always, State::MailFrom}, {State::AuthLogin, 334, always, State::User},
    {State::User, 334, always, State::Password},        {State::Password, 235, always, State::MailFrom},
    {State::MailFrom, 250, always, State::RcptTo},      {State::RcptTo, 250, always, State::Data},
    {State::RcptTo, 251, always, State::Data},          {State::Data, 354, always, State::Message},
    {State::Message, 250, always, State::Quit},         {State::Quit, AnyCode, always, State::Finished},
};

/// One line on the wire, whatever was typed or pasted: a line break in an address would begin a command of its own.
QByteArray oneLine(QString text)
{
    text.removeIf([](QChar c) { return c.category() == QChar::Other_Control; });
    return text.toUtf8();
}

QByteArray message(const QString& from, const SmtpMail& mail, const QDateTime& now)
{
    QByteArray body = mail.body.toUtf8();
    body.replace("\n", "\r\n");
    body.replace("\r\n.", "\r\n..");
    return "From: " + oneLine(from) + "\r\nTo: " + oneLine(mail.to) + "\r\nSubject: " + oneLine(mail.subject) +
           "\r\nDate: " + now.toString(Qt::RFC2822Date).toUtf8() +
           "\r\nMIME-Version: 1.0\r\nContent-Type: text/plain; charset=UTF-8\r\n\r\n" + body + "\r\n.";
}

} // namespace

SmtpConfig SmtpConfig::completed() const
{
    SmtpConfig config = *this;
    if (config.port < 1)
        config.port = SmtpConfig().port;
    if (config.from.isEmpty())
        config.from = config.user;
    return config;
}

bool SmtpDialogue::implicitTls(const SmtpConfig& config)
{
    return config.tls && config.port == 465;
}

std::optional<State> SmtpDialogue::next(State state, int code, const SmtpConfig& config, bool encrypted)
{
    const auto* const step = std::find_if(std::begin(steps), std::end(steps), [&](const auto& row) {
        return row.state == state && (row.code == code || row.code == AnyCode) && row.condition(config, encrypted);
    });
    return step == std::end(steps) ? std::nullopt : std::optional(step->next);
}

QByteArray SmtpDialogue::command(State state, const SmtpConfig& config, const SmtpMail& mail, const QString& localHost,
                                 const QDateTime& now)
{
    switch (state) {
    case State::Ehlo:
    case State::EhloOverTls:
        return "EHLO " + (localHost.isEmpty() ? QByteArrayLiteral("localhost") : oneLine(localHost));
    case State::StartTls:
        return "STARTTLS";
    case State::AuthLogin:
        return "AUTH LOGIN";
    case State::User:
        return config.user.toUtf8().toBase64();
    case State::Password:
        return config.password.toUtf8().toBase64();
    case State::MailFrom:
        return "MAIL FROM:<" + oneLine(config.from) + ">";
    case State::RcptTo:
        return "RCPT TO:<" + oneLine(mail.to) + ">";
    case State::Data:
        return "DATA";
    case State::Message:
        return message(config.from, mail, now);
    case State::Quit:
        return "QUIT";
    case State::Greeting:
    case State::Finished:
        break;
    }
    return {};
}

QString SmtpDialogue::withoutPassword(const QString& line, const QString& password)
{
    if (password.isEmpty())
        return line;
    const auto mask = QStringLiteral("***");
    // Whole words only: the password "pass" shall not spoil "bad password".
    const QString pattern = QStringLiteral("(?<![\\p{L}\\p{N}])%1(?![\\p{L}\\p{N}])");
    const QRegularExpression wholeWord(pattern.arg(QRegularExpression::escape(password)));
    QString masked = line;
    masked.replace(QString::fromLatin1(password.toUtf8().toBase64()), mask);
    return masked.replace(wholeWord, mask);
}
