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

    /// Nothing when that is no JSON object. Members that are missing or of another type stay empty.
    static std::optional<UpdateInfo> fromJson(const QByteArray& json);
};
Q_DECLARE_METATYPE(UpdateInfo)

/// Asks the update service whether a newer version exists. Only reports; one question at a time.
class UpdateChecker : public QObject {
    Q_OBJECT
public:
    /// \param timeout without a byte from the server; after four times that a reply that still trickles in is given up.
    explicit UpdateChecker(QObject* parent = nullptr, std::chrono::milliseconds timeout = std::chrono::seconds(15));

    /// Ignored while a check is in flight. Every check that was sent sets AppSettings::lastCheck when it ends; saving
    /// the settings is the receiver's. \param silent handed on to the signals.
    void check(bool silent);
    bool isChecking() const { return m_reply != nullptr; }

    /// Whether the check at the program's start is worth a question: not within 20 hours of the last one.
    static bool isDue(const QDateTime& lastCheck, const QDateTime& now);

    /// The service's address with the question in its query. \param setting empty: the built-in address.
    static QUrl questionUrl(const QString& setting);

    /// Below, equal to or above 0 as version a is lower than, equal to or higher than b. What is missing between the
    /// dots, no number, or none of 64 bits counts as 0.
    static int compareVersions(const QString& a, const QString& b);

Q_SIGNALS:
    void updateAvailable(const UpdateInfo& info, bool silent);
    void upToDate(bool silent);
    void checkFailed(const QString& reason, bool silent);

private Q_SLOTS:
    void onFinished();

private:
    void onReadyRead();
    /// Why the reply is no answer, or nothing.
    QString failure(const QNetworkReply& reply) const;

    QNetworkAccessManager m_network;
    QPointer<QNetworkReply> m_reply;
    std::chrono::milliseconds m_timeout;
    bool m_silent = false;
    bool m_tooLarge = false;
};
