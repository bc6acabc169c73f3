#pragma once

#include <QMetaType>
#include <QNetworkAccessManager>
#include <QObject>
#include <QPointer>
#include <QString>

class QNetworkReply;

/// What the update service answers. Texts from outside: never show them as markup.
struct UpdateInfo {
    QString latestVersion;
    QString downloadUrl;
    QString notes;
    QString notesUrl;
    QString releaseDate;
    QString minSupportedVersion;
    bool critical = false;
};
Q_DECLARE_METATYPE(UpdateInfo)

/// Asks the update service whether a newer version exists. Only reports; one question at a time.
class UpdateChecker : public QObject {
    Q_OBJECT
public:
    explicit UpdateChecker(QObject* parent = nullptr);

    /// Ignored while a check is in flight. \param silent handed on to the signals.
    void check(bool silent);
    bool isChecking() const { return m_reply != nullptr; }

    /// Below, equal to or above 0 as version a is lower than, equal to or higher than b.
    static int compareVersions(const QString& a, const QString& b);

Q_SIGNALS:
    void updateAvailable(const UpdateInfo& info, bool silent);
    void upToDate(bool silent);
    void checkFailed(const QString& reason, bool silent);

private Q_SLOTS:
    void onFinished();

private:
    QNetworkAccessManager m_network;
    QPointer<QNetworkReply> m_reply;
    bool m_silent = false;
};
