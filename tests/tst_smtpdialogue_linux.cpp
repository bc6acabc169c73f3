#include "net/smtpclient.h"

#include <QHostInfo>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace std::chrono_literals;

namespace {

constexpr char Close[] = "<close>"; // hangs up; other text may stand in front
constexpr char Forever[] = "<forever>"; // says the text in front of it again and again

/// A mail server that says one entry of its script on connection and one after each command, and notes the commands.
struct Peer : QTcpServer {
    QByteArrayList script{"220 hello", "250-odd\r\n250 ok", "334 VXNlcg==", "334 UGFzcw==", "235 in", "250 ok",
                          "250 ok",    "354 go on",         "250 queued",   "221 bye"};
    QByteArrayList heard; // without CR LF; a message is one entry
    QTcpSocket* socket = nullptr;
    QByteArray bytes;

    void greet()
    {
        socket = nextPendingConnection();
        heard.clear();
        bytes.clear();
        connect(socket, &QTcpSocket::readyRead, this, &Peer::hear);
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
        entry.replace(Close, {}).replace(Forever, {});
        if (repeats)
            connect(socket, &QTcpSocket::bytesWritten, this, [this, entry] { socket->write(entry); });
        socket->write(entry.isEmpty() || repeats ? entry : entry + "\r\n");
        if (closes)
            socket->disconnectFromHost();
    }
};

} // namespace

class TestSmtpClient : public QObject {
    Q_OBJECT

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
        QTest::addColumn<int>("index");
        QTest::addColumn<QByteArray>("entry"); // none: silence
        QTest::addColumn<QString>("message");
        const auto row = [](const QByteArray& name, int index, const QByteArray& entry, const char* message) {
            QTest::newRow(name) << index << entry << QString::fromUtf8(message);
        };
        constexpr char Sent[] = "Notification sent.";
        constexpr char TimedOut[] = "The SMTP server did not respond in time.";
        for (int i = 0; i < 10; ++i) {
            const QByteArray at = QByteArray::number(i);
            row("wrong code " + at, i, "550 no", i == 4 ? "Authentication failed: 550 no" : i == 9 ? Sent : "550 no");
            row("closed " + at, i, Close, "The remote host closed the connection");
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
        QFETCH(int, index);
        QFETCH(QByteArray, entry);
        QFETCH(QString, message);
        m_peer->script[index] = entry;
        const bool success = message == "Notification sent.";
        SmtpClient client(nullptr, message.endsWith("in time.") ? 150ms : 10s);
        QSignalSpy finished(&client, &SmtpClient::finished);
        client.send(m_config, m_to, {}, {});
        QVERIFY(finished.wait());
        QTRY_VERIFY(m_peer->socket->state() == QTcpSocket::UnconnectedState);
        QCOMPARE(finished, QList<QVariantList>({{success, message}}));
        QCOMPARE(m_peer->heard.size(), success ? 9 : index);
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
        QTRY_VERIFY(m_peer->socket->state() == QTcpSocket::UnconnectedState);
        QCOMPARE(finished.size(), 4);
    }

    /// The one state that no conversation without TLS reaches.
    void refusedOverTls() { QVERIFY(!SmtpDialogue::next(SmtpDialogue::State::EhloOverTls, 550, m_config, true)); }

    /// Every way to cut the same bytes in two gives the same replies, also around the length at which a line is cut.
    void readerIgnoresPieces()
    {
        const QByteArray bytes = "250-StartTLS\r\n250 nö\r\n\r\n220\r\n123456789012\r\r\n12345678901\r\r\n"
                                 "12345678901€9\r\n\n\r\r\n354 x\r\n";
        for (qsizetype cut = 0; cut <= bytes.size(); ++cut) {
            SmtpReplyReader reader(12);
            QString lines;
            for (const QByteArray& piece : {bytes.left(cut), bytes.mid(cut)}) {
                reader.append(piece);
                while (const auto reply = reader.next())
                    lines += QString::number(reply->code) + u':' + reply->line + u'|';
                QVERIFY(reader.held() <= 13);
            }
            QCOMPARE(lines, "250:250 nö|123:123456789012|123:12345678901\r|123:12345678901\uFFFD|354:354 x|");
            QVERIFY(reader.startTlsAdvertised());
        }
    }

private:
    std::unique_ptr<Peer> m_peer;
    SmtpConfig m_config;
    const QString m_to = "d@\r\ne";
};

QTEST_GUILESS_MAIN(TestSmtpClient)
#include "tst_smtpdialogue_linux.moc"
