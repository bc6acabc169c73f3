#include "archive/archiveindex.h"
#include "engine/recorder.h"
#include "engine/schedulecontroller.h"
#include "process/worker.h"
#include "settings/appsettings.h"
#include "station/clockwatch.h"
#include "station/controlserver.h"
#include "station/folderlock.h"
#include "station/recordingpause.h"
#include "station/station.h"
#include "support/table.h"

#include <QDir>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <future>

class TestStation : public QObject {
    Q_OBJECT

    using Wishes = Table<bool, bool, bool, bool, QString>; // automatic, in schedule, trigger, manual; by whom
    using Steps = Table<QList<qint64>, QList<qint64>, QList<qint64>>; // wall, monotonic; what was told
    using Requests = Table<QJsonObject, QString>;

private Q_SLOTS:
    void initTestCase()
    {
        QCoreApplication::setOrganizationName("Quayside");
        QCoreApplication::setApplicationName("tst_station");
        QStandardPaths::setTestModeEnabled(true);
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, m_folder.filePath("store"));
        AppSettings& settings = AppSettings::instance();
        settings.outputFolder = m_folder.filePath("recordings");
        settings.autoMode = false;
        settings.checkAtStartup = false;
    }

    void wishes_data()
    {
        const Wishes row;
        row("nothing", false, true, false, false, "");
        row("automatic, marked hour", true, true, false, false, "scheduler");
        row("automatic, other hour: the others do not count", true, false, true, true, "");
        row("trigger", false, false, true, true, "trigger");
        row("by hand", false, false, false, true, "manual");
    }
    void wishes()
    {
        const auto [automatic, inSchedule, trigger, manual, by] = Wishes::fetch();
        const RecordingWish wish = RecordingWish::decide(automatic, inSchedule, trigger, manual);
        QCOMPARE(wish.by, by);
        QCOMPARE(wish.wanted, !by.isEmpty());
    }

    void noticesASetClock_data()
    {
        const Steps row;
        row("runs", {0, 30'000, 60'000}, {0, 30'000, 60'000}, {});
        row("corrected", {0, 30'900, 60'000}, {0, 30'000, 60'000}, {});
        row("forward", {0, 40'000, 70'000}, {0, 30'000, 60'000}, {10'000});
        row("back", {0, -3'570'000}, {0, 30'000}, {-3'600'000});
    }
    void noticesASetClock()
    {
        const Steps::Values row = Steps::fetch();
        const auto& wall = std::get<0>(row);
        const auto& monotonic = std::get<1>(row);
        qsizetype step = 0;
        ClockWatch watch(nullptr, {[&] { return wall.at(step); }, [&] { return monotonic.at(step); }});
        QList<qint64> heard;
        connect(&watch, &ClockWatch::clockSet, this, [&heard](qint64 byMs) { heard << byMs; });
        for (step = 1; step < wall.size(); ++step)
            watch.look();
        QCOMPARE(heard, std::get<2>(row));
    }

    void workerNeverHoldsItsOwner()
    {
        std::promise<void> hang;
        std::shared_future<void> released = hang.get_future().share();
        QStringList heard;
        QElapsedTimer clock;
        {
            Worker worker(this);
            QVERIFY(worker.post([&heard, reply = worker.reply()] { reply([&heard] { heard << "first"; }); }));
            QVERIFY(worker.finish(std::chrono::seconds(5)));
            QTRY_COMPARE(heard, QStringList("first"));
            worker.post([released, &heard, reply = worker.reply()] {
                released.wait();
                reply([&heard] { heard << "too late"; });
            });
            for (size_t i = 0; i < 2 * Worker::MaxTasks; ++i)
                worker.post([] {});
            QVERIFY(!worker.post([] {})); // bounded
            clock.start();
            QVERIFY(!worker.finish(std::chrono::milliseconds(50)));
        }
        QVERIFY(clock.elapsed() < 2000);
        hang.set_value();
        QTest::qWait(50);
        QCOMPARE(heard, QStringList("first"));
    }

    void folderHasOneOwner()
    {
        const QString folder = m_folder.filePath("locked");
        FolderLock first, second;
        QCOMPARE(first.take(folder), QString());
        QCOMPARE(first.take(folder), QString());
        QVERIFY(second.take(folder).contains(QDir::toNativeSeparators(folder)));
        QCOMPARE(first.take(m_folder.filePath("other")), QString()); // lets go of the first
        QCOMPARE(second.take(folder), QString());
        QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList());
        if (!QDir(folder).removeRecursively()) // as if another disk were there now
            return; // Windows does not let it go while the lock is held
        QCOMPARE(second.take(folder), QString());
        QVERIFY(!first.take(folder).isEmpty()); // the lock was made anew
        QVERIFY(!first.isHeld());
    }

    /// Neither the retention nor the journal of a second channel may touch it.
    void leavesAnothersFolderAlone()
    {
        AppSettings& settings = AppSettings::instance();
        const QString own = std::exchange(settings.outputFolder, m_folder.filePath("others"));
        FolderLock other;
        QCOMPARE(other.take(settings.outputFolder), QString());
        QFile old(settings.outputFolder + "/20010101-000000.wav");
        QVERIFY(old.open(QIODevice::WriteOnly) && old.write("x") == 1);
        old.close();
        {
            Station station;
            QSignalSpy errors(&station, &Station::errorLogged);
            station.begin();
            for (int i = 0; i < 3; ++i)
                station.startRecording();
            QCOMPARE(errors.size(), 1);
            QVERIFY(station.archive()->records().isEmpty());
            other.release();
            settings.backend = int(CaptureBackend::Stream);
            station.startRecording();
            QCOMPARE(station.archive()->records().size(), 1);
        }
        settings.outputFolder = own;
    }

    void answersAnything_data()
    {
        const Requests row;
        row("nothing", {}, "There is no such command.");
        row("a number", {{"command", 5}}, "There is no such command.");
        row("values that are none", {{"command", "set"}, {"values", QJsonArray{1, 2}}}, "nothing to change");
        row("a key that is none", {{"command", "set"}, {"values", QJsonObject{{"x", "1"}}}}, "There is no setting");
        row("a value of another type", {{"command", "set"}, {"values", QJsonObject{{"output/splitMinutes", 5}}}},
            "one line of text");
    }
    void answersAnything()
    {
        const auto [request, error] = Requests::fetch();
        Station station;
        ControlServer server(station);
        const QJsonObject answer = server.answer(request);
        QCOMPARE(answer.value("ok").toBool(), error.isEmpty());
        QVERIFY2(answer.value("error").toString().contains(error), qPrintable(answer.value("error").toString()));
    }

    /// An error that ends a recording does not end the wish for it; Stop does.
    void remembersWhatIsWanted()
    {
        AppSettings::instance().backend = int(CaptureBackend::Stream);
        AppSettings::instance().streamUrl.clear();
        Station station;
        QSignalSpy errors(&station, &Station::errorLogged);
        station.begin();
        QVERIFY(!station.status().wish.wanted);
        station.startRecording(); // there is no stream
        QCOMPARE(errors.size(), 1);
        QCOMPARE(station.status().lastError, errors.first().first().toString());
        Q_EMIT station.recorder()->started("manual");
        QCOMPARE(station.status().wish.by, "manual");
        Q_EMIT station.recorder()->stopped("capture error");
        QVERIFY(station.status().wish.wanted);
        Q_EMIT station.recorder()->stopped("settings changed");
        QVERIFY(station.status().wish.wanted);
        station.stopRecording();
        QVERIFY(!station.status().wish.wanted);
        QVERIFY(station.status().toJson().value("wantedBy").isNull());
    }

    void pauseEndsByItself_data()
    {
        const Table<int, int, bool> row; // minutes of the pause; the clock then says that so many have passed; is over
        row("not yet", 15, 14, false);
        row("over", 15, 15, true);
        row("the clock was set forward", 15, 120, true);
        row("never by itself", 0, 10'000, false);
    }
    void pauseEndsByItself()
    {
        const auto [minutes, passed, over] = Table<int, int, bool>::fetch();
        QDateTime now(QDate(2024, 3, 5), QTime(15, 10));
        RecordingPause pause(nullptr, [&now] { return now; });
        QSignalSpy changes(&pause, &RecordingPause::changed);
        pause.begin(std::chrono::minutes(minutes));
        QCOMPARE(pause.text(), minutes > 0 ? "Paused until 15:25" : "Paused until you start it");
        now = now.addSecs(60 * passed);
        if (over)
            QTRY_VERIFY(!pause.isActive()); // it looks by itself
        else
            pause.look();
        QCOMPARE(changes.size(), over ? 2 : 1);
        QCOMPARE(pause.text().isEmpty(), over);
    }

    /// Every try to record is an error here, as there is no stream: so it is seen who tries.
    void startsNothingWhilePaused()
    {
        AppSettings& settings = AppSettings::instance();
        settings.backend = int(CaptureBackend::Stream);
        settings.streamUrl.clear();
        settings.autoMode = true;
        settings.schedule.setAll(true);
        Station station;
        QSignalSpy errors(&station, &Station::errorLogged);
        station.begin();
        QTRY_COMPARE(errors.size(), 1);
        QVERIFY(station.status().wish.wanted);
        station.pauseRecording(std::chrono::minutes(15));
        QVERIFY(!station.status().wish.wanted);
        const QJsonObject status = station.status().toJson();
        QVERIFY(status.value("paused").toBool() && status.value("pausedUntil").isString());
        station.schedule()->forceEvaluate();
        station.setSchedule(settings.schedule);
        station.applySettings(true);
        QCOMPARE(errors.size(), 1);
        station.endPause();
        QCOMPARE(errors.size(), 2);
        QVERIFY(station.status().wish.wanted && station.status().toJson().value("pausedUntil").isNull());

        station.pauseRecording(std::chrono::minutes(0));
        station.startRecording(); // the operator's word counts, and ends the pause
        QVERIFY(errors.size() > 2 && !station.pause()->isActive());

        // What was started by hand goes on afterwards, unless it was stopped by hand in between.
        settings.autoMode = false;
        station.applySettings(false);
        for (const bool stopped : {false, true}) {
            Q_EMIT station.recorder()->started("manual");
            errors.clear();
            station.pauseRecording(std::chrono::minutes(0));
            if (stopped)
                station.stopRecording();
            station.endPause();
            QCOMPARE(errors.size(), stopped ? 0 : 1);
        }
    }

private:
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(TestStation)
#include "tst_station.moc"
