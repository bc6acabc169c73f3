#include "net/webrequest.h"
#include "settings/appsettings.h"
#include "station/alarmboard.h"
#include "station/alarmoutbox.h"
#include "station/attemptlog.h"
#include "station/heartbeat.h"
#include "station/levelwatch.h"
#include "station/stationstatus.h"
#include "support/table.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

namespace {

const QDateTime Start(QDate(2026, 11, 23), QTime(3, 12));

Alarm alarmAt(int second, AlarmKind kind = AlarmKind::NoAudio)
{
    return {kind, false, QStringLiteral("alarm %1").arg(second), Start.addSecs(second), 0};
}

/// A web server that takes what comes and gives one answer.
class Peer : public QTcpServer {
public:
    explicit Peer(const QByteArray& answer)
    {
        listen(QHostAddress::LocalHost);
        connect(this, &QTcpServer::newConnection, this, [this, answer] {
            QTcpSocket* socket = nextPendingConnection();
            connect(socket, &QTcpSocket::readyRead, this, [this, socket, answer] {
                heard += socket->readAll();
                const qsizetype body = heard.indexOf("\r\n\r\n") + 4;
                const qsizetype at = heard.indexOf("Content-Length: ");
                const int length = at < 0 ? 0 : heard.mid(at + 16, heard.indexOf('\r', at) - at - 16).toInt();
                if (body >= 4 && heard.size() - body >= length && !answer.isEmpty())
                    socket->write(answer);
            });
        });
    }
    QString url() const { return QStringLiteral("http://127.0.0.1:%1/hook/secret").arg(serverPort()); }
    QByteArray heard;
};

} // namespace

class TestAlarms : public QObject {
    Q_OBJECT

    using BoardRows = Table<bool, int, QList<int>, QStringList>; // enabled, delay; second of each change; what is told
    using LevelRows = Table<QList<std::pair<double, double>>, LevelWatch::Verdict>;
    using WordRows = Table<std::function<void(StationStatus&)>, QString, bool>;
    using AnswerRows = Table<QByteArray, QString>;

private Q_SLOTS:
    void init()
    {
        for (AlarmSetting& alarm : m_settings.alarms)
            alarm = {};
        m_settings.alarmUrl.clear();
        m_settings.heartbeatUrl.clear();
    }

    void board_data()
    {
        const BoardRows row;
        row("at once", true, 0, {5, 8}, {"raised 5", "over 8 after 3000"});
        row("lasts", true, 10, {5, 20}, {"raised 5", "over 20 after 15000"});
        row("too short", true, 10, {5, 14}, {});
        row("twice", true, 2, {1, 5, 6, 7, 10, 20},
            {"raised 1", "over 5 after 4000", "raised 10", "over 20 after 10000"});
        row("switched off", false, 0, {5, 20}, {});
    }
    void board()
    {
        const auto [enabled, delay, changes, told] = BoardRows::fetch();
        m_settings.alarms[size_t(AlarmKind::NoAudio)] = {enabled, delay};
        AlarmBoard alarms;
        QStringList heard;
        connect(&alarms, &AlarmBoard::raised, this,
                [&](const Alarm& alarm) { heard << QString("raised %1").arg(Start.secsTo(alarm.at)); });
        connect(&alarms, &AlarmBoard::over, this, [&](const Alarm& alarm) {
            heard << QString("over %1 after %2").arg(Start.secsTo(alarm.at)).arg(alarm.durationMs);
        });
        AlarmBoard::Conditions conditions{};
        for (int second = 0; second < 30; ++second) {
            conditions[size_t(AlarmKind::NoAudio)] ^= changes.contains(second);
            alarms.look(conditions, second * 1000, Start.addSecs(second));
        }
        QCOMPARE(heard, told);
    }

    void levels_data()
    {
        const LevelRows row;
        row("programme", {{-20, -22}, {-12, -13}}, {false, false});
        row("a tone", {{-12, -12}, {-12.5, -12}}, {false, true});
        row("one channel dead", {{-20, -60}, {-12, -60}}, {true, false});
        row("now the one and now the other", {{-20, -60}, {-60, -10}}, {false, false});
        row("silence", {{-60, -60}, {-60, -60}}, {false, false});
        row("a pause of a dead channel", {{-20, -60}, {-60, -60}, {-60, -60}}, {true, false});
        row("a tone that moved once between two looks", {{-12, -12}, {-8, -8}, {-12, -12}}, {false, false});
    }
    /// One look per second, at 50 readings each; the last row has its moves within one.
    void levels()
    {
        const auto [readings, expected] = LevelRows::fetch();
        LevelWatch watch;
        LevelWatch::Verdict verdict;
        for (const auto& [left, right] : readings) {
            for (int i = 0; i < 50; ++i)
                watch.add(left, right, -60.0);
            verdict = watch.look();
        }
        QCOMPARE(verdict, expected);
    }

    void words_data()
    {
        const WordRows row;
        row(
            "idle", [](StationStatus&) {}, "NOT RECORDING", false);
        row(
            "records", [](StationStatus& s) { s.recording = true; }, "RECORDING", false);
        row(
            "wanted", [](StationStatus& s) { s.wish.wanted = true; }, "NOT RECORDING", true);
        row(
            "tries", [](StationStatus& s) { s.recording = s.tryingAgain = true; }, "TRYING AGAIN", true);
        row(
            "no audio", [](StationStatus& s) { s.recording = s.noAudio = s.diskLow = true; }, "NO AUDIO", true);
        row(
            "silent", [](StationStatus& s) { s.recording = true, s.silentSince = Start; }, "SILENCE since 03:12", true);
        row(
            "disk", [](StationStatus& s) { s.recording = s.diskLow = true; }, "DISK", true);
    }
    void words()
    {
        const auto [change, word, alarming] = WordRows::fetch();
        StationStatus status;
        change(status);
        QCOMPARE(status.wordText(), word);
        QCOMPARE(status.isAlarming(), alarming);
    }

    void attempts()
    {
        AttemptLog log;
        QVERIFY(log.addFailure("no device", Start));
        QCOMPARE(log.line("no device"), "no device");
        for (int i = 1; i < 120; ++i) {
            log.hold({nullptr, "Recording started"});
            QVERIFY(!log.addFailure("no device", Start.addSecs(5 * i)));
        }
        QVERIFY(log.addFailure("no disk", Start.addSecs(3600))); // other news
        QVERIFY(!log.addFailure("no device", Start.addSecs(3605))); // they take turns
        QCOMPARE(log.line("no device"), "no device (tried 121 times since 03:12)");
        QCOMPARE(log.line("no disk"), "no disk");
        QCOMPARE(log.failures(), 122);
        log.hold({nullptr, "Recording started"});
        QCOMPARE(log.end().size(), 1);
        QVERIFY(!log.isFailing());
    }

    /// 12 alarms within the interval are two messages, and the limit holds over a restart.
    void queueJoinsAndRemembers()
    {
        constexpr qint64 Interval = 900'000;
        const qint64 start = Start.toMSecsSinceEpoch();
        AlarmQueue queue(Interval);
        queue.add(alarmAt(0));
        QCOMPARE(queue.dueMs(start), start);
        QCOMPARE(queue.begin(start).size(), 1);
        queue.add(alarmAt(1));
        queue.end(true);
        for (int i = 2; i < 12; ++i)
            queue.add(alarmAt(i * 60));
        AlarmQueue again(Interval);
        again.readJson(QJsonDocument::fromJson(QJsonDocument(queue.toJson()).toJson()).object());
        QCOMPARE(again.size(), 11);
        QCOMPARE(again.dueMs(start + 1000), start + Interval);
        QCOMPARE(again.dueMs(start - 3'600'000), start - 3'600'000); // the clock was put back
        const QList<Alarm> sent = again.begin(start + Interval);
        QCOMPARE(AlarmQueue::title(sent, 1), "12 alarms between 2026-11-23 03:12 and 2026-11-23 03:23");
        QVERIFY(AlarmQueue::text(sent, 0).contains("2026-11-23 03:23:00  alarm 660\n"));
    }

    void queueIsBounded()
    {
        AlarmQueue queue(0);
        const qint64 start = Start.toMSecsSinceEpoch();
        queue.begin(start);
        qint64 wait = 0;
        for (int i = 0; i < 40; ++i) {
            queue.end(false);
            QVERIFY(queue.dueMs(start) - start >= wait);
            wait = queue.dueMs(start) - start;
        }
        QCOMPARE(wait, 900'000);
        for (int i = 0; i < AlarmQueue::MostWaiting + 50; ++i)
            queue.add(alarmAt(i));
        QCOMPARE(queue.size(), AlarmQueue::MostWaiting);
        QCOMPARE(queue.dropped(), 50);
        QCOMPARE(queue.dropExpired(start + AlarmQueue::KeptForMs + 100'001), 51);
        queue.readJson(
            {{"waiting", QJsonArray{1, "x", QJsonObject{{"alarm", "none"}}}}, {"dropped", -5}, {"lastMs", "x"}});
        QCOMPARE(queue.size(), AlarmQueue::MostWaiting - 51);
        QCOMPARE(queue.dropped(), 0);
    }

    void webAnswers_data()
    {
        const AnswerRows row;
        row("taken", "HTTP/1.1 204 No Content\r\n\r\n", "");
        row("a body without end", "HTTP/1.1 200 OK\r\n\r\n" + QByteArray(100'000, 'x'), "");
        row("refused", "HTTP/1.1 500 Oops\r\nContent-Length: 0\r\n\r\n",
            "The web server answered with the status 500.");
        row("sent elsewhere", "HTTP/1.1 302 Found\r\nLocation: http://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n",
            "The web server answered with the status 302.");
        row("no answer", "", "The web server did not answer in time.");
    }
    void webAnswers()
    {
        const auto [answer, error] = AnswerRows::fetch();
        Peer peer(answer);
        WebRequest request(nullptr, std::chrono::milliseconds(500));
        QSignalSpy finished(&request, &WebRequest::finished);
        request.post(peer.url(), "{}");
        QTRY_COMPARE(finished.size(), 1);
        QCOMPARE(finished[0][0].toString(), error);
        QVERIFY(peer.heard.startsWith("POST /hook/secret HTTP/1.1\r\n"));
        QVERIFY(!request.isBusy());
    }

    void outbox()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("data/alarms.json");
        const auto status = [] { return QJsonObject{{"recording", true}}; };
        {
            AlarmOutbox silent(path, status);
            silent.add(alarmAt(0)); // no way is wanted
        }
        QVERIFY(!QFile::exists(path));
        auto gone = std::make_unique<Peer>("");
        m_settings.alarmUrl = gone->url();
        gone.reset();
        {
            AlarmOutbox outbox(path, status);
            QSignalSpy failed(&outbox, &AlarmOutbox::failed);
            outbox.add({AlarmKind::NoAudio, false, "No audio", QDateTime::currentDateTime(), 0});
            QTRY_COMPARE(failed.size(), 1);
            QVERIFY2(!failed[0][0].toString().contains("secret"), qPrintable(failed[0][0].toString()));
            QTRY_VERIFY(QFile::exists(path));
        }
        // As if a minute had passed.
        QFile file(path);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QJsonObject stored = QJsonDocument::fromJson(file.readAll()).object();
        file.close();
        QJsonObject web = stored.value("web").toObject();
        QCOMPARE(web.value("waiting").toArray().size(), 1);
        web.insert("lastMs", 1);
        stored.insert("web", web);
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(QJsonDocument(stored).toJson()) > 0);
        file.close();

        Peer peer("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
        m_settings.alarmUrl = peer.url();
        AlarmOutbox outbox(path, status);
        QSignalSpy finished(&outbox, &AlarmOutbox::finished);
        outbox.send();
        QTRY_COMPARE(finished.size(), 1);
        QVERIFY(finished[0][0].toBool());
        const QJsonObject message =
            QJsonDocument::fromJson(peer.heard.mid(peer.heard.indexOf("\r\n\r\n") + 4)).object();
        QCOMPARE(message.value("alarms").toArray().at(0).toObject().value("alarm").toString(), "noAudio");
        QVERIFY(message.value("status").toObject().value("recording").toBool());
    }

    void heartbeat()
    {
        Peer peer("HTTP/1.1 200 OK\r\nContent-Length: 0\r\n\r\n");
        m_settings.heartbeatUrl = peer.url();
        bool writes = false;
        Heartbeat heart([&] { return writes; });
        heart.beat();
        writes = true;
        heart.beat();
        QTRY_VERIFY(!peer.heard.isEmpty());
        QCOMPARE(peer.heard.count("GET /hook/secret"), 1);
    }

private:
    AppSettings& m_settings = AppSettings::instance();
};

QTEST_GUILESS_MAIN(TestAlarms)
#include "tst_alarms.moc"
