#include "net/smtpclient.h"
#include "support/table.h"

#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QTemporaryDir>

enum Server { Plain, StartTls, Tls };

/// Against a real server, with and without TLS.
class TestSmtpClientLinux : public QObject {
    Q_OBJECT

    using OutcomeRows = Table<int, QString, QString, bool, QString>;

private Q_SLOTS:
    void initTestCase()
    {
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.setWorkingDirectory(m_folder.path());
        m_server.start(QStringLiteral(QT_TESTCASE_SOURCEDIR "/support/smtpserver"), {});
        QTRY_VERIFY_WITH_TIMEOUT(m_server.canReadLine(), 20'000);
        m_endpoints = m_server.readLine().trimmed().split(' ');
    }
    void cleanupTestCase()
    {
        m_server.kill();
        m_server.waitForFinished();
    }

    void outcome_data()
    {
        const OutcomeRows row;
        const QString untrusted = QSslError(QSslError::SelfSignedCertificate).errorString();
        const QString otherHost = QSslError(QSslError::HostNameMismatch).errorString();
        const char right[] = "open sesame";
        row("plain, no login", Plain, "localhost", "", true, "Notification sent.");
        row("STARTTLS unknown", Plain, "localhost", right, true, "454 TLS not available");
        row("STARTTLS, login", StartTls, "localhost", right, true, "Notification sent.");
        row("STARTTLS, self-signed", StartTls, "localhost", right, false, untrusted);
        row("STARTTLS, another host's name", StartTls, "127.0.0.1", right, true, otherHost);
        row("TLS, login", Tls, "", right, true, "Notification sent.");
        row("TLS, wrong password", Tls, "", "guess", true,
            "Authentication failed: 535 5.7.8 Authentication credentials invalid");
        row("TLS, self-signed", Tls, "", right, false, untrusted);
    }
    void outcome()
    {
        const auto [server, name, password, trusted, message] = OutcomeRows::fetch();
        const QString endpoint = m_endpoints.at(server);
        if (endpoint == "-")
            QSKIP("TLS from the first byte is spoken on port 465 only, and the server cannot listen there");
        const QString host = server == Tls ? endpoint : name;
        const int port = server == Tls ? 465 : endpoint.toInt();
        const bool success = message == "Notification sent.";
        QFile mail(m_folder.filePath("mail"));
        mail.remove();
        QSslConfiguration ssl = m_original;
        if (trusted)
            ssl.addCaCertificates(m_folder.filePath("cert.pem"));
        QSslConfiguration::setDefaultConfiguration(ssl);
        SmtpClient client;
        QSignalSpy finished(&client, &SmtpClient::finished);
        const bool tls = server != Plain || !success;
        const QString user = password.isEmpty() ? QString() : QStringLiteral("zoë");
        const SmtpConfig config{host, port, user, password, "logger@station.example", tls};
        for (int again = 1; again <= 2; ++again) { // TLS starts afresh on the same socket
            client.send(config, "desk@station.example", "Stille – ü", "Zürich\n.dot\n..two\n.\nend");
            QVERIFY(finished.wait(10'000));
            QCOMPARE(finished.takeFirst(), QVariantList({success, message}));
        }
        QCOMPARE(mail.open(QIODevice::ReadOnly), success);
        const QByteArray delivered = success ? mail.readAll() : QByteArray();
        const QByteArray envelope = "logger@station.example ['desk@station.example'] ";
        QVERIFY2(!success || delivered.startsWith(envelope + (user.isEmpty() ? "False" : "True")), delivered);
        QVERIFY2(!success || delivered.endsWith("\r\n\r\nZürich\r\n.dot\r\n..two\r\n.\r\nend\r\n"), delivered);
    }

private:
    const QSslConfiguration m_original = QSslConfiguration::defaultConfiguration();
    QTemporaryDir m_folder;
    QProcess m_server;
    QByteArrayList m_endpoints; ///< by Server: two ports of localhost, an address with port 465
};

QTEST_GUILESS_MAIN(TestSmtpClientLinux)
#include "tst_smtpclient_linux.moc"
