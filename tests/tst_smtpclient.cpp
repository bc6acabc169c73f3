#include "net/smtpclient.h"

#include <QHostInfo>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTest>

using namespace std::chrono_literals;

namespace {

constexpr char Silence[] = "<silence>"; // nothing is said
constexpr char Close[] = "<close>"; // hangs up; other text may stand in front
constexpr char Forever[] = "<forever>"; // says the text behind it again and again

/// A mail server that says one entry of its script on connection and one after each command, and notes the commands.
class Peer : public QTcpServer {
public:
    QByteArrayList script{"220 hello", "250-odd\r\n250 ok", "334 VXNlcg==", "334 UGFzcw==", "235 in", "250 ok",
                          "250 ok",    "354 go on",         "250 queued",   "221 bye"};
    QByteArrayList heard; // without CR LF; a message is one entry
    QTcpSocket* socket = nullptr;

    Peer()
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this] {
            socket = nextPendingConnection();
            heard.clear();
            m_bytes.clear();
            connect(socket, &QTcpSocket::readyRead, this, &Peer::hear);
            say();
        });
    }

private:
    void hear()
    {
        m_bytes += socket->readAll();
        const auto end = [this] { return heard.endsWith("DATA") ? QByteArray("\r\n.\r\n") : QByteArray("\r\n"); };
        for (qsizetype at; (at = m_bytes.indexOf(end())) >= 0; say()) {
            const qsizetype length = at + end().size();
            heard += m_bytes.left(length - 2);
            m_bytes.remove(0, length);
        }
    }
    void say()
    {
        const QByteArray entry = script.value(heard.size(), Silence);
        if (entry.startsWith(Forever)) {
            const QByteArray text = entry.mid(qstrlen(Forever));
            connect(socket, &QTcpSocket::bytesWritten, this, [this, text] { socket->write(text); });
            socket->write(text);
        } else if (entry.endsWith(Close)) {
            socket->write(entry.chopped(qstrlen(Close)));
            socket->disconnectFromHost();
        } else if (entry != Silence) {
            socket->write(entry + "\r\n");
        }
    }

    QByteArray m_bytes;
};

} // namespace

class TestSmtpClient : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_peer = std::make_unique<Peer>();
        m_config.host = QStringLiteral("127.0.0.1");
        m_config.port = m_peer->serverPort();
        m_config.user = QStringLiteral("zoë");
        m_config.password = QStringLiteral("opensesame");
        m_config.from = QStringLiteral("a@b\r\n.example\x7f\u0085");
        m_config.tls = false;
    }

    /// What becomes of the attempt when one entry of the script, and so the reply in one state, is another.
    void outcome_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QByteArray>("entry");
        QTest::addColumn<QString>("message");
        const auto row = [](const QByteArray& name, int index, const QByteArray& entry, const QString& message) {
            QTest::newRow(name) << index << entry << message;
        };
        const auto sent = QStringLiteral("Notification sent.");
        const auto timedOut = QStringLiteral("The SMTP server did not respond in time.");
        const auto hungUp = QStringLiteral("The remote host closed the connection");
        for (int i = 0; i < 10; ++i) {
            const QByteArray at = QByteArray::number(i);
            const QString refused = QLatin1String(i == 4 ? "Authentication failed: 550 no" : "550 no");
            row("wrong code " + at, i, "550 no", i == 9 ? sent : refused);
            row("closed " + at, i, Close, hungUp);
            row("silence " + at, i, Silence, timedOut);
        }
        row("will forward", 6, "251 forwarded", sent);
        row("251 only fits recipients", 5, "251 x", QStringLiteral("251 x"));
        row("bare codes are ignored", 5, "550\r\n\r\n250 ok", sent);
        row("bare code only", 5, "250", timedOut);
        row("continuation's code is ignored", 5, "550-no\r\n250 ok", sent);
        row("no number", 0, "hello there", QStringLiteral("hello there"));
        row("reply and hanging up", 5, "554 Zürich — nö\r\n<close>", QStringLiteral("554 Zürich — nö"));
        row("STARTTLS is the setting's decision", 1, "250-STARTTLS\r\n250 ok", sent);
        row("password repeated", 4, "535 opensesame b3BlbnNlc2FtZQ== opensesames",
            QStringLiteral("Authentication failed: 535 *** *** opensesames"));
        row("continuation without end", 1, Forever + QByteArray("250-more\r\n"), timedOut);
        row("line without end", 1, Forever + QByteArray(65536, 'x'), timedOut);
        row("long line", 1, "500 " + QByteArray(1'000'000, 'x'), QStringLiteral("500 ") + QString(65532, u'x'));
    }
    void outcome()
    {
        QFETCH(int, index);
        QFETCH(QByteArray, entry);
        QFETCH(QString, message);
        m_peer->script[index] = entry;
        const bool success = message == QLatin1String("Notification sent.");
        SmtpClient client(nullptr, message.endsWith(QLatin1String("in time.")) ? 150ms : 10s);
        QSignalSpy finished(&client, &SmtpClient::finished);
        client.send(m_config, m_to, {}, {});
        QVERIFY(finished.wait());
        QTRY_VERIFY(m_peer->socket->state() == QTcpSocket::UnconnectedState);
        QCOMPARE(finished, QList<QVariantList>({{success, message}}));
        QCOMPARE(m_peer->heard.size(), success ? 9 : index);
    }

    void wire_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<QByteArray>("sent");
        QTest::newRow("dots") << QStringLiteral("ü\n.b\n..c\n.\n\n.") << QByteArray("ü\r\n..b\r\n...c\r\n..\r\n\r\n..");
        QTest::newRow("leading dot stays single") << QStringLiteral(".%1") << QByteArray(".%1");
        QTest::newRow("CR LF gets another CR") << QStringLiteral("a\r\n.b") << QByteArray("a\r\r\n..b");
    }
    /// All that is sent, with line breaks in everything that shall be one line.
    void wire()
    {
        QFETCH(QString, body);
        QFETCH(QByteArray, sent);
        SmtpClient client;
        QSignalSpy finished(&client, &SmtpClient::finished);
        client.send(m_config, m_to, QStringLiteral("Stille – %1\nBcc: x@y\r\n.\r\nQUIT"), body);
        QVERIFY(finished.wait());
        QCOMPARE(m_peer->heard.size(), 9);
        const QByteArray dateLine = m_peer->heard.at(7).split('\n').value(3);
        const auto date = QDateTime::fromString(QString::fromLatin1(dateLine).mid(6).trimmed(), Qt::RFC2822Date);
        QVERIFY(qAbs(date.secsTo(QDateTime::currentDateTime())) < 60);
        const QByteArray mail = "From: a@b.example\r\nTo: d@e\r\nSubject: Stille – %1Bcc: x@y.QUIT\r\n" + dateLine +
                                "\nMIME-Version: 1.0\r\nContent-Type: text/plain; charset=UTF-8\r\n\r\n" + sent +
                                "\r\n.";
        QCOMPARE(m_peer->heard, QByteArrayList({"EHLO " + QHostInfo::localHostName().toUtf8(), "AUTH LOGIN",
                                                "em/Dqw==", "b3BlbnNlc2FtZQ==", "MAIL FROM:<a@b.example>",
                                                "RCPT TO:<d@e>", "DATA", mail, "QUIT"}));
    }

    void notConfigured()
    {
        SmtpClient client;
        QSignalSpy finished(&client, &SmtpClient::finished);
        client.send(m_config, {}, {}, {});
        client.send({}, m_to, {}, {});
        const QVariantList expected{false, QStringLiteral("SMTP server or recipient address is not configured.")};
        QCOMPARE(finished, QList<QVariantList>({expected, expected}));
    }

    /// First out of the answer to a failure, then while that one is under way; at last the object dies.
    void anotherSend()
    {
        auto client = std::make_unique<SmtpClient>(nullptr, 4s);
        QSignalSpy finished(client.get(), &SmtpClient::finished);
        m_peer->script[5] = "550 no\r\n250 left over";
        connect(
            client.get(), &SmtpClient::finished, this,
            [&] {
                m_peer->script[5] = finished.count() == 1 ? Silence : "250 ok";
                client->send(m_config, m_to, {}, {});
            },
            Qt::SingleShotConnection);
        client->send(m_config, m_to, {}, {});
        QVERIFY(finished.wait());
        QTRY_COMPARE(m_peer->heard.size(), 5);
        m_peer->script[5] = "250 ok";
        client->send(m_config, m_to, {}, {});
        QVERIFY(finished.wait(3000));
        QCOMPARE(finished.at(1).at(0).toBool(), true);

        m_peer->script[5] = Silence;
        client->send(m_config, m_to, {}, {});
        QTRY_COMPARE(m_peer->heard.size(), 5);
        client.reset();
        QTRY_VERIFY(m_peer->socket->state() == QTcpSocket::UnconnectedState);
        QCOMPARE(finished.count(), 2);
    }

    /// Every way to cut the same bytes in two gives the same replies, also around the length at which a line is cut.
    void readerIgnoresPieces()
    {
        const QByteArray bytes = "250-StartTLS\r\n250 nö\r\n\r\n220\r\n123456789012\r\r\n12345678901\r\r\n"
                                 "12345678901€9\r\n\n\r\r\n354 x\r\n";
        for (qsizetype cut = 0; cut <= bytes.size(); ++cut) {
            SmtpReplyReader reader(12);
            QStringList lines;
            for (const QByteArray& piece : {bytes.left(cut), bytes.mid(cut)}) {
                reader.append(piece);
                while (const auto reply = reader.next())
                    lines += QStringLiteral("%1:%2").arg(reply->code).arg(reply->line);
                QVERIFY(reader.held() <= 13);
            }
            QCOMPARE(lines.join(u'|'), QStringLiteral("250:250 nö|123:123456789012|123:12345678901\r|"
                                                      "123:12345678901\uFFFD|354:354 x"));
            QVERIFY(reader.startTlsAdvertised());
        }
    }

private:
    std::unique_ptr<Peer> m_peer;
    SmtpConfig m_config;
    const QString m_to = QStringLiteral("d@\r\ne");
};

QTEST_GUILESS_MAIN(TestSmtpClient)
#include "tst_smtpclient.moc"
