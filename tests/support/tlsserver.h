#pragma once

#include <QFile>
#include <QProcess>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>
#include <QTemporaryDir>

/// A server at 127.0.0.1 whose connections speak in the clear until encrypt(). The program openssl makes its
/// certificate, which this process trusts from then on; without that program (under Wine) there is none.
struct TlsServer : QTcpServer {
    static bool canEncrypt() { return !configuration().localCertificate().isNull(); }
    static void encrypt(QSslSocket* socket)
    {
        socket->setSslConfiguration(configuration());
        socket->startServerEncryption();
    }

protected:
    void incomingConnection(qintptr descriptor) override
    {
        auto* const socket = new QSslSocket(this);
        socket->setSocketDescriptor(descriptor);
        addPendingConnection(socket);
    }

private:
    static const QSslConfiguration& configuration()
    {
        static const QSslConfiguration made = make();
        return made;
    }
    static QSslConfiguration make()
    {
        const QTemporaryDir folder;
        QProcess openssl;
        openssl.setWorkingDirectory(folder.path());
        openssl.start("openssl", QString("req -x509 -newkey ec -pkeyopt ec_paramgen_curve:P-256 -nodes -keyout key.pem "
                                         "-out cert.pem -subj /CN=localhost -addext subjectAltName=IP:127.0.0.1")
                                     .split(u' '));
        openssl.waitForFinished();
        QSslConfiguration tls = QSslConfiguration::defaultConfiguration();
        tls.addCaCertificates(folder.filePath("cert.pem"));
        QSslConfiguration::setDefaultConfiguration(tls);
        tls.setPeerVerifyMode(QSslSocket::VerifyNone);
        tls.setLocalCertificateChain(QSslCertificate::fromPath(folder.filePath("cert.pem")));
        QFile key(folder.filePath("key.pem"));
        if (key.open(QIODevice::ReadOnly))
            tls.setPrivateKey(QSslKey(&key, QSsl::Ec));
        return tls;
    }
};
