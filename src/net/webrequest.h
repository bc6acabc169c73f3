#pragma once

#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QString>

#include <chrono>

class QNetworkRequest;

/// Tells something to a web server, or asks it to take note, and says once how that went. What the server answers
/// beyond its status is not read. Never blocks; an attempt takes 15 seconds at most. One at a time.
class WebRequest : public QObject {
    Q_OBJECT
public:
    explicit WebRequest(QObject* parent = nullptr, std::chrono::milliseconds timeout = std::chrono::seconds(15));

    bool isBusy() const { return m_reply != nullptr; }
    /// Without effect while busy. \param url http or https.
    void get(const QString& url);
    void post(const QString& url, const QByteArray& json);

Q_SIGNALS:
    /// Never before the call returns. \param error a sentence for the operator without the address, whose path may be a
    /// secret; empty when the server took it (status 200 to 299).
    void finished(const QString& error);

private:
    QNetworkRequest request(const QString& url) const;
    void watch(QNetworkReply* reply);
    void onFinished();

    QNetworkAccessManager m_network;
    QPointer<QNetworkReply> m_reply;
    std::chrono::milliseconds m_timeout;
};
