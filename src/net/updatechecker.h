#pragma once

#include <QDateTime>
#include <QMetaType>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QUrl>

#include <chrono>
#include <optional>

/// What the update service answers. Texts from outside: never show them as markup.
struct UpdateInfo {
    QString latestVersion;
    QString downloadUrl;
    QString notes;
    QString notesUrl;
    QString releaseDate;
    QString minSupportedVersion;
    bool critical = false;

    /// Reads the answer; nothing when it is no JSON object. Members that are missing or of another type stay empty.
    static std::optional<UpdateInfo> fromJson(const QByteArray& json);
};
Q_DECLARE_METATYPE(UpdateInfo)

/// Asks the update service whether a newer version exists. Only reports; one question at a time.
class UpdateChecker : public QObject {
    Q_OBJECT
public:
    /// \param timeout how long the server may send nothing; a reply that still trickles in after four times
    /// that long is given up.
    explicit UpdateChecker(QObject* parent = nullptr, std::chrono::milliseconds timeout = std::chrono::seconds(15));

    /// Ignored while a check is in flight. Every check that was sent sets AppSettings::lastCheck when it ends; the
    /// receiver of the signals saves the settings. \param silent handed on to the signals.
    void check(bool silent);
    bool isChecking() const { return m_reply != nullptr; }

    /// Whether the program should check at its start: not within 20 hours of the last check.
    static bool isDue(const QDateTime& lastCheck, const QDateTime& now);

    /// The service's address with the request in its query. \param setting empty: the built-in address.
    static QUrl requestUrl(const QString& setting);

    /// \return below 0 when version a is lower than b, 0 when they are equal, above 0 when a is higher. A part between
    /// the dots that is missing, no number or too large for 64 bits counts as 0.
    static int compareVersions(const QString& a, const QString& b);

Q_SIGNALS:
    void updateAvailable(const UpdateInfo& info, bool silent);
    void upToDate(bool silent);
    void checkFailed(const QString& reason, bool silent);

private Q_SLOTS:
    void onFinished();

private:
    void onReadyRead();
    /// Why the reply is no valid answer; empty when it is one.
    QString failure(const QNetworkReply& reply) const;

    QNetworkAccessManager m_network;
    QPointer<QNetworkReply> m_reply;
    std::chrono::milliseconds m_timeout;
    bool m_silent = false;
    bool m_tooLarge = false;
};
