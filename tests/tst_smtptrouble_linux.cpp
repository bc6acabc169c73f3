#include "net/smtpclient.h"
#include "support/table.h"
#include "support/tlsserver.h"

#include <QHostInfo>
#include <QSignalSpy>

using namespace std::chrono_literals;

namespace {

constexpr char Close[] = "<close>"; // hangs up; other text may stand in front
constexpr char Encrypt[] = "<encrypt>"; // speaks TLS from then on
constexpr char Forever[] = "<forever>"; // says the text in front of it again and again

constexpr char Sent[] = "Notification sent.";
constexpr char Closed[] = "The remote host closed the connection";
constexpr char TimedOut[] = "The SMTP server did not respond in time.";

/// A mail server that says one entry of its script on connection and one after each command, and notes the commands.
struct Peer : TlsServer {
    QByteArrayList script{"220 hello", "250-odd\r\n250 ok", "334 VXNlcg==", "334 UGFzcw==", "235 in", "250 ok",
                          "250 ok",    "354 go on",         "250 queued",   "221 bye"};
    QByteArrayList heard; // without CR LF; a message is one entry
    QSslSocket* socket = nullptr;
    QByteArray bytes;

    void greet()
    {
        socket = qobject_cast<QSslSocket*>(nextPendingConnection());
        heard.clear();
        bytes.clear();
        connect(socket, &QSslSocket::readyRead, this, &Peer::hear);
        say(script.at(0));
    }
    void hear()
    {
        bytes += socket->readAll();
        const QByteArray end = heard.endsWith("DATA") ? "\r\n.\r\n" : "\r\n";
        if (!bytes.endsWith(end)) // the client waits for each reply
            return;
        heard += std::exchange(bytes, {}).chopped(2);
        say(script.value(heard.size()));
    }
    void say(QByteArray entry)
    {
        const bool closes = entry.endsWith(Close);
        const bool repeats = entry.endsWith(Forever);
        const bool encrypts = entry.endsWith(Encrypt);
        entry.replace(Close, {}).replace(Forever, {}).replace(Encrypt, {});
        if (repeats)
            connect(socket, &QSslSocket::bytesWritten, this, [this, entry] { socket->write(entry); });
        socket->write(entry.isEmpty() || repeats ? entry : entry + "\r\n");
        if (encrypts)
            encrypt(socket);
        if (closes)
            socket->disconnectFromHost();
    }
};

} // namespace

class TestSmtpTrouble : public QObject {
    Q_OBJECT

    using Outcomes = Table<int, QByteArray, QString>;

private Q_SLOTS:
    void init()
    {
        m_peer = std::make_unique<Peer>();
        connect(m_peer.get(), &QTcpServer::newConnection, m_peer.get(), &Peer::greet);
        QVERIFY(m_peer->listen(QHostAddress::LocalHost));
        m_config = {"127.0.0.1", m_peer->serverPort(), "zoë", "opensesame", "a@b\r\n.example\x7f\u0085", false};
    }

    /// What becomes of the attempt when one entry of the script, and so the reply in one state, is another.
    void outcome_data()
    {
        const Outcomes row;
        for (int i = 0; i < 10; ++i) {
            const QByteArray at = QByteArray::number(i);
            row("wrong code " + at, i, "550 no", i == 4 ? "Authentication failed: 550 no" : i == 9 ? Sent : "550 no");
            row("closed " + at, i, Close, Closed);
            row("silence " + at, i, {}, TimedOut);
        }
        row("will forward", 6, "251 forwarded", Sent);
        row("251 only fits recipients", 5, "251 x", "251 x");
        row("bare codes and a continuation's are ignored", 5, "550\r\n\r\n550-no\r\n250 ok", Sent);
        row("no number", 0, "hello there", "hello there");
        row("reply and hanging up", 5, "554 Zürich — nö\r\n<close>", "554 Zürich — nö");
        row("STARTTLS is the setting's decision", 1, "250-STARTTLS\r\n250 ok", Sent);
        row("password repeated", 4, "535 opensesame b3BlbnNlc2FtZQ== opensesames",
            "Authentication failed: 535 *** *** opensesames");
        row("continuation without end", 1, "250-more\r\n<forever>", TimedOut);
    }
    void outcome()
    {
        const auto [index, entry, message] = Outcomes::fetch();
        m_peer->script[index] = entry;
        const bool success = message == Sent;
        SmtpClient client(nullptr, message == TimedOut ? 400ms : 10s);
        QSignalSpy finished(&client, &SmtpClient::finished);
        client.send(m_config, m_to, {}, {});
        QVERIFY(finished.wait());
        QTRY_VERIFY(m_peer->socket->state() == QSslSocket::UnconnectedState);
        QCOMPARE(finished, QList<QVariantList>({{success, message}}));
        QCOMPARE(m_peer->heard.size(), success ? 9 : index);
    }

    void startTls_data()
    {
        const Outcomes row;
        row("silence in the handshake", 2, "220 go", TimedOut);
        row("closed in the handshake", 2, "220 go<close>", Closed);
        row("silence over TLS", 3, {}, TimedOut);
        row("closed over TLS", 3, Close, "The TLS/SSL connection has been closed");
        row("refused over TLS", 3, "550 no", "550 no");
    }
    void startTls()
    {
        QVERIFY(TlsServer::canEncrypt());
        m_peer->script = {"220 hello", "250 ok", "220 go<encrypt>"};
        m_config.tls = true;
        const auto [index, entry, message] = Outcomes::fetch();
        m_peer->script.resize(index);
        m_peer->script << entry;
        SmtpClient client(nullptr, message == TimedOut ? 1s : 10s);
        QSignalSpy finished(&client, &SmtpClient::finished);
        client.send(m_config, m_to, {}, {});
        QTRY_COMPARE(finished, QList<QVariantList>({{false, message}}));
        QCOMPARE(m_peer->heard.size(), index);
    }

    /// All that is sent, with line breaks in everything that shall be one line.
    void wire()
    {
        SmtpClient client;
        QSignalSpy finished(&client, &SmtpClient::finished);
        client.send(m_config, m_to, "Stille – %1\nBcc: x@y\r\n.\r\nQUIT", ".%1\r\n.ü\n..c\n.\n\n.");
        QVERIFY(finished.wait());
        const QByteArray dateLine = m_peer->heard.value(7).split('\n').value(3);
        const auto date = QDateTime::fromString(QString(dateLine).mid(6).trimmed(), Qt::RFC2822Date);
        QVERIFY(qAbs(date.secsTo(QDateTime::currentDateTime())) < 60);
        const QByteArray mail = "From: a@b.example\r\nTo: d@e\r\nSubject: Stille – %1Bcc: x@y.QUIT\r\n" + dateLine +
                                "\nMIME-Version: 1.0\r\nContent-Type: text/plain; charset=UTF-8\r\n\r\n"
                                ".%1\r\r\n..ü\r\n...c\r\n..\r\n\r\n..\r\n.";
        QCOMPARE(m_peer->heard, QByteArrayList({"EHLO " + QHostInfo::localHostName().toUtf8(), "AUTH LOGIN",
                                                "em/Dqw==", "b3BlbnNlc2FtZQ==", "MAIL FROM:<a@b.example>",
                                                "RCPT TO:<d@e>", "DATA", mail, "QUIT"}));
    }

    /// While one is under way, then out of the answer to a failure; at last the object dies.
    void anotherSend()
    {
        auto client = std::make_unique<SmtpClient>();
        QSignalSpy finished(client.get(), &SmtpClient::finished);
        const auto send = [&] { client->send(m_config, m_to, {}, {}); };
        m_peer->script[5].clear();
        send();
        QTRY_COMPARE(m_peer->heard.size(), 5);
        m_peer->script[5] = "550 no\r\n250 left over";
        connect(client.get(), &SmtpClient::finished, this, send, Qt::SingleShotConnection);
        send();
        QTRY_COMPARE(finished, QList<QVariantList>(2, {false, "550 no"}));

        client->send({}, m_to, {}, {});
        client->send(m_config, {}, {}, {});
        const QVariantList notConfigured{false, "SMTP server or recipient address is not configured."};
        QCOMPARE(finished.mid(2), QList<QVariantList>(2, notConfigured));

        m_peer->script[5].clear();
        send();
        QTRY_COMPARE(m_peer->heard.size(), 5);
        client.reset();
        QTRY_VERIFY(m_peer->socket->state() == QSslSocket::UnconnectedState);
        QCOMPARE(finished.size(), 4);
    }

    /// Out of the answer to a lost connection; the second has its own time, not the rest of the first's.
    void sendAfterLostConnection()
    {
        SmtpClient client(nullptr, 2s);
        QSignalSpy finished(&client, &SmtpClient::finished);
        const auto send = [&] { client.send(m_config, m_to, {}, {}); };
        m_peer->script[1].clear();
        send();
        QTRY_COMPARE(m_peer->heard.size(), 1);
        QTest::qWait(1200);
        m_peer->script[1] = "250 ok";
        m_peer->script[5].clear();
        connect(&client, &SmtpClient::finished, this, send, Qt::SingleShotConnection);
        m_peer->socket->abort();
        QTRY_COMPARE(m_peer->heard.size(), 5);
        QTest::qWait(1200);
        QCOMPARE(finished.size(), 1);
        QTRY_COMPARE(finished, QList<QVariantList>({{false, Closed}, {false, TimedOut}}));
    }

private:
    std::unique_ptr<Peer> m_peer;
    SmtpConfig m_config;
    const QString m_to = "d@\r\ne";
};

QTEST_GUILESS_MAIN(TestSmtpTrouble)
#include "tst_smtptrouble_linux.moc"
