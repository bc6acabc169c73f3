#include "net/updatechecker.h"

#include "settings/appsettings.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QNetworkRequest>
#include <QSysInfo>
#include <QTimer>
#include <QUrlQuery>

#include <algorithm>

namespace {

constexpr char BuiltInUrl[] = "https://updates.quayside.example/api/latest.json";
constexpr qint64 MaxBody = qint64(1024) * 1024; // bytes; a real answer has a few hundred
constexpr qint64 MinSecondsBetweenChecks = 20 * 3600;

} // namespace

std::optional<UpdateInfo> UpdateInfo::fromJson(const QByteArray& json)
{
    const QJsonDocument document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return std::nullopt;
    const QJsonObject object = document.object();
    const auto text = [&object](const char* key) { return object.value(QLatin1String(key)).toString(); };
    UpdateInfo info;
    info.latestVersion = text("latest_version");
    info.downloadUrl = text("download_url");
    info.notes = text("notes");
    info.notesUrl = text("notes_url");
    info.releaseDate = text("release_date");
    info.minSupportedVersion = text("min_supported_version");
    info.critical = object.value(QLatin1String("critical")).toBool();
    return info;
}

UpdateChecker::UpdateChecker(QObject* parent, std::chrono::milliseconds timeout) : QObject(parent), m_timeout(timeout)
{
}

bool UpdateChecker::isDue(const QDateTime& lastCheck, const QDateTime& now)
{
    // A last check in the future was made with a wrong clock.
    return !lastCheck.isValid() || lastCheck > now || lastCheck.secsTo(now) >= MinSecondsBetweenChecks;
}

QUrl UpdateChecker::requestUrl(const QString& setting)
{
    QUrl url(setting.isEmpty() ? QString::fromLatin1(BuiltInUrl) : setting);
    if (!url.isValid())
        return url;
    QUrlQuery query(url);
    query.addQueryItem(QStringLiteral("current"), QCoreApplication::applicationVersion());
    query.addQueryItem(QStringLiteral("platform"), QStringLiteral("windows")); // the service knows no other
    query.addQueryItem(QStringLiteral("arch"), QSysInfo::currentCpuArchitecture());
    url.setQuery(query);
    return url;
}

void UpdateChecker::check(bool silent)
{
    if (m_reply)
        return;
    const QUrl url = requestUrl(AppSettings::instance().updateUrl);
    if (!url.isValid()) {
        Q_EMIT checkFailed(tr("The update URL is not valid."), silent);
        return;
    }
    QNetworkRequest request(url);
    request.setHeader(
        QNetworkRequest::UserAgentHeader,
        QStringLiteral("%1/%2").arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion()));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::NoLessSafeRedirectPolicy);
    request.setTransferTimeout(int(m_timeout.count()));
    m_silent = silent;
    m_tooLarge = false;
    m_reply = m_network.get(request);
    m_reply->setReadBufferSize(2 * MaxBody);
    connect(m_reply, &QNetworkReply::readyRead, this, &UpdateChecker::onReadyRead);
    connect(m_reply, &QNetworkReply::finished, this, &UpdateChecker::onFinished);
    QTimer::singleShot(4 * m_timeout, m_reply, &QNetworkReply::abort);
}

void UpdateChecker::onReadyRead()
{
    if (m_reply && m_reply->bytesAvailable() > MaxBody) {
        m_tooLarge = true;
        m_reply->abort();
    }
}

QString UpdateChecker::failure(const QNetworkReply& reply) const
{
    if (reply.error() != QNetworkReply::NoError && !m_tooLarge)
        return reply.errorString();
    const int status = reply.attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status != 200)
        return tr("The update server returned HTTP %1.").arg(status);
    return {};
}

void UpdateChecker::onFinished()
{
    QNetworkReply* const reply = m_reply;
    m_reply = nullptr;
    if (!reply)
        return;
    reply->deleteLater();
    AppSettings::instance().lastCheck = QDateTime::currentDateTime();

    const QString reason = failure(*reply);
    if (!reason.isEmpty()) {
        Q_EMIT checkFailed(reason, m_silent);
        return;
    }
    const auto info = m_tooLarge ? std::nullopt : UpdateInfo::fromJson(reply->readAll());
    if (!info)
        Q_EMIT checkFailed(tr("The update server sent a malformed response."), m_silent);
    else if (info->latestVersion.isEmpty())
        Q_EMIT checkFailed(tr("The update server did not report a version."), m_silent);
    else if (compareVersions(info->latestVersion, QCoreApplication::applicationVersion()) > 0)
        Q_EMIT updateAvailable(*info, m_silent);
    else
        Q_EMIT upToDate(m_silent);
}

int UpdateChecker::compareVersions(const QString& a, const QString& b)
{
    const QStringList left = a.split(u'.', Qt::SkipEmptyParts);
    const QStringList right = b.split(u'.', Qt::SkipEmptyParts);
    for (qsizetype i = 0; i < std::max(left.size(), right.size()); ++i) {
        const qlonglong l = left.value(i).toLongLong();
        const qlonglong r = right.value(i).toLongLong();
        if (l != r)
            return l < r ? -1 : 1;
    }
    return 0;
}
