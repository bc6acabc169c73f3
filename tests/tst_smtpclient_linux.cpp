#include "net/smtpclient.h"

#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QTemporaryDir>
#include <QTest>

enum Port { Plain, StartTls, Tls };

/// Against a real server, with and without TLS.
class TestSmtpClientLinux : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.setWorkingDirectory(m_folder.path());
        m_server.start(QStringLiteral(QT_TESTCASE_SOURCEDIR "/support/smtpserver"), {});
        QTRY_VERIFY_WITH_TIMEOUT(m_server.canReadLine(), 20'000);
        m_ports = m_server.readLine().trimmed().split(' ');
    }
    void cleanupTestCase()
    {
        m_server.kill();
        m_server.waitForFinished();
    }

    void outcome_data()
    {
        QTest::addColumn<int>("port");
        QTest::addColumn<QString>("host");
        QTest::addColumn<QString>("password");
        QTest::addColumn<bool>("trusted");
        QTest::addColumn<QString>("message");
        const auto row = [](const char* name, Port port, const QString& message, const char* password = "open sesame",
                            bool trusted = true, const char* host = "localhost") {
            QTest::newRow(name) << int(port) << host << password << trusted << message;
        };
        const QString untrusted = QSslError(QSslError::SelfSignedCertificate).errorString();
        row("plain, no login", Plain, "Notification sent.", "");
        row("STARTTLS unknown", Plain, "454 TLS not available", "");
        row("STARTTLS, login", StartTls, "Notification sent.");
        row("STARTTLS, self-signed", StartTls, untrusted, "open sesame", false);
        row("STARTTLS, another host's name", StartTls, QSslError(QSslError::HostNameMismatch).errorString(),
            "open sesame", true, "127.0.0.1");
        row("TLS, login", Tls, "Notification sent.");
        row("TLS, wrong password", Tls, "Authentication failed: 535 5.7.8 Authentication credentials invalid", "guess");
        row("TLS, self-signed", Tls, untrusted, "open sesame", false);
    }
    void outcome()
    {
        QFETCH(int, port);
        QFETCH(QString, host);
        QFETCH(QString, password);
        QFETCH(bool, trusted);
        QFETCH(QString, message);
        if (m_ports.at(port) == "0")
            QSKIP("TLS from the first byte is spoken on port 465 only, and this user may not listen there");
        const bool success = message == "Notification sent.";
        QFile mail(m_folder.filePath("mail"));
        mail.remove();
        QSslConfiguration ssl = m_original;
        if (trusted)
            ssl.addCaCertificates(m_folder.filePath("cert.pem"));
        QSslConfiguration::setDefaultConfiguration(ssl);
        SmtpClient client;
        QSignalSpy finished(&client, &SmtpClient::finished);
        const bool tls = port != Plain || !success;
        const QString user = password.isEmpty() ? QString() : QStringLiteral("zoë");
        const SmtpConfig config{host, m_ports.at(port).toInt(), user, password, "logger@station.example", tls};
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
    QByteArrayList m_ports;
};

QTEST_GUILESS_MAIN(TestSmtpClientLinux)
#include "tst_smtpclient_linux.moc"
