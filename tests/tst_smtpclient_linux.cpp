#include "net/smtpclient.h"

#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QSslConfiguration>
#include <QTemporaryDir>
#include <QTest>

namespace {

enum Port { Plain, StartTls, StartTlsRefusingEhlo, Tls };

} // namespace

/// Against a real server, with and without TLS.
class TestSmtpClientLinux : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.start(QStringLiteral(QT_TESTCASE_SOURCEDIR "/support/smtpserver"), {m_folder.path()});
        QTRY_VERIFY_WITH_TIMEOUT(m_server.canReadLine(), 20'000);
        m_ports = m_server.readLine().trimmed().split(' ');
        QCOMPARE(m_ports.size(), 4);
    }
    void cleanupTestCase()
    {
        m_server.kill();
        m_server.waitForFinished();
    }

    void outcome_data()
    {
        QTest::addColumn<int>("port");
        QTest::addColumn<bool>("trusted");
        QTest::addColumn<QString>("host");
        QTest::addColumn<QString>("password");
        QTest::addColumn<QString>("message");
        const auto row = [](const char* name, Port port, const QString& message, const char* password = "open sesame",
                            bool trusted = true, const char* host = "localhost") {
            QTest::newRow(name) << int(port) << trusted << QString::fromLatin1(host) << QString::fromLatin1(password)
                                << message;
        };
        const auto sent = QStringLiteral("Notification sent.");
        const QString untrusted = QSslError(QSslError::UnableToGetLocalIssuerCertificate).errorString();
        const QString otherHost = QSslError(QSslError::HostNameMismatch).errorString();
        const auto refused = QStringLiteral("Authentication failed: 535 5.7.8 Authentication credentials invalid");
        row("plain, no login", Plain, sent, "");
        row("STARTTLS unknown", Plain, QStringLiteral("454 TLS not available"), "");
        row("STARTTLS, login", StartTls, sent);
        row("STARTTLS, wrong password", StartTls, refused, "guess");
        row("STARTTLS, unknown authority", StartTls, untrusted, "open sesame", false);
        row("STARTTLS, another host's name", StartTls, otherHost, "open sesame", true, "127.0.0.1");
        row("STARTTLS, second EHLO refused", StartTlsRefusingEhlo, QStringLiteral("550 not over TLS"), "");
        row("TLS, login", Tls, sent);
        row("TLS, wrong password", Tls, refused, "guess");
        row("TLS, unknown authority", Tls, untrusted, "open sesame", false);
    }
    void outcome()
    {
        QFETCH(int, port);
        QFETCH(bool, trusted);
        QFETCH(QString, host);
        QFETCH(QString, password);
        QFETCH(QString, message);
        if (m_ports.at(port) == "0")
            QSKIP("TLS from the first byte is spoken on port 465 only, and this user may not listen there");
        const bool success = message == QLatin1String("Notification sent.");
        const QString mailFile = m_folder.filePath(QStringLiteral("mail"));
        QFile::remove(mailFile);
        const QSslConfiguration original = QSslConfiguration::defaultConfiguration();
        QSslConfiguration ssl = original;
        if (trusted)
            ssl.addCaCertificates(m_folder.filePath(QStringLiteral("ca.pem")));
        QSslConfiguration::setDefaultConfiguration(ssl);
        SmtpClient client;
        QSslConfiguration::setDefaultConfiguration(original);

        QSignalSpy finished(&client, &SmtpClient::finished);
        const QString user = password.isEmpty() ? QString() : QStringLiteral("zoë");
        const SmtpConfig config{host,
                                m_ports.at(port).toInt(),
                                user,
                                password,
                                QStringLiteral("logger@station.example"),
                                port != Plain || !success};
        for (int again = 1; again <= 2; ++again) { // TLS starts afresh on the same socket
            client.send(config, QStringLiteral("desk@station.example"), QStringLiteral("Stille – ü"),
                        QStringLiteral("Zürich\n.dot\n..two\n.\nend"));
            QVERIFY(finished.wait(10'000));
            QCOMPARE(finished.takeFirst(), QVariantList({success, message}));
        }
        QFile mail(mailFile);
        QCOMPARE(mail.open(QIODevice::ReadOnly), success);
        if (!mail.isOpen())
            return;
        const QByteArray delivered = mail.readAll();
        const QByteArray login = user.isEmpty() ? "False" : "True";
        QVERIFY2(delivered.startsWith("logger@station.example ['desk@station.example'] " + login + "\r\n"), delivered);
        QVERIFY2(delivered.contains("\r\nSubject: Stille – ü\r\n"), delivered);
        QCOMPARE(delivered.mid(delivered.indexOf("\r\n\r\n") + 4),
                 QByteArray("Zürich\r\n.dot\r\n..two\r\n.\r\nend\r\n"));
    }

private:
    QTemporaryDir m_folder;
    QProcess m_server;
    QByteArrayList m_ports;
};

QTEST_GUILESS_MAIN(TestSmtpClientLinux)
#include "tst_smtpclient_linux.moc"
