#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class QDateTime;

struct SmtpConfig {
    QString host;
    int port = 465;
    QString user; ///< empty: no login
    QString password; ///< plain
    QString from;
    bool tls = true; ///< from the first byte on port 465, by STARTTLS on any other

    /// A copy without gaps: the default port in place of one below 1, and the user as the sender when there is none.
    SmtpConfig completed() const;
};

struct SmtpMail {
    QString to; ///< one address
    QString subject;
    QString body; ///< lines end with LF
};

/// What a mail client says and when (RFC 5321, 3207, 4954), as functions of their arguments.
namespace SmtpDialogue {

/// Named after what was sent last; each waits for the reply to that.
enum class State {
    Greeting = 1, ///< nothing was sent: the server begins
    Ehlo,
    StartTls,
    EhloOverTls,
    AuthLogin,
    User,
    Password,
    MailFrom,
    RcptTo,
    Data,
    Message,
    Quit,
    Finished,
};

/// Whether the connection is encrypted from the first byte, without STARTTLS.
bool implicitTls(const SmtpConfig& config);

/// Where a final reply leads; nothing when this code ends the attempt.
std::optional<State> next(State state, int code, const SmtpConfig& config, bool encrypted);

/// What is sent on entering a state, without the CR LF behind it. \param localHost empty: "localhost".
QByteArray command(State state, const SmtpConfig& config, const SmtpMail& mail, const QString& localHost,
                   const QDateTime& now);

/// The reply line with the password and its Base64 form made unreadable: some servers repeat what they were sent.
QString withoutPassword(const QString& line, const QString& password);

} // namespace SmtpDialogue
