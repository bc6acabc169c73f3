#include "net/webrequest.h"

#include <QCoreApplication>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>
#include <QUrl>

WebRequest::WebRequest(QObject* parent, std::chrono::milliseconds timeout) : QObject(parent), m_timeout(timeout) {}

QNetworkRequest WebRequest::request(const QString& url) const
{
    QNetworkRequest request{QUrl(url)};
    request.setHeader(
        QNetworkRequest::UserAgentHeader,
        QStringLiteral("%1/%2").arg(QCoreApplication::applicationName(), QCoreApplication::applicationVersion()));
    // A server that sends us elsewhere would get what is meant for the one that was chosen.
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute, QNetworkRequest::ManualRedirectPolicy);
    return request;
}

void WebRequest::get(const QString& url)
{
    if (!isBusy())
        watch(m_network.get(request(url)));
}

void WebRequest::post(const QString& url, const QByteArray& json)
{
    if (isBusy())
        return;
    QNetworkRequest withBody = request(url);
    withBody.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    watch(m_network.post(withBody, json));
}

void WebRequest::watch(QNetworkReply* reply)
{
    m_reply = reply;
    reply->setReadBufferSize(4096); // nobody reads it, so the server is held there
    connect(reply, &QNetworkReply::finished, this, &WebRequest::onFinished, Qt::QueuedConnection);
    // The status is all that is wanted: a body without end must not keep it open.
    connect(reply, &QNetworkReply::readyRead, reply, &QNetworkReply::abort, Qt::QueuedConnection);
    QTimer::singleShot(m_timeout, reply, &QNetworkReply::abort);
}

void WebRequest::onFinished()
{
    QNetworkReply* const reply = m_reply;
    m_reply = nullptr;
    if (!reply)
        return;
    reply->deleteLater();
    const int status = reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    if (status >= 200 && status < 300)
        Q_EMIT finished({});
    else if (status > 0)
        Q_EMIT finished(tr("The web server answered with the status %1.").arg(status));
    else if (reply->error() == QNetworkReply::OperationCanceledError)
        Q_EMIT finished(tr("The web server did not answer in time."));
    else
        Q_EMIT finished(reply->errorString().replace(reply->url().toString(), reply->url().host()));
}
