#include "archive/archiveindex.h"
#include "archive/housekeeper.h"
#include "engine/schedulecontroller.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "support/scriptedcapture.h"
#include "support/table.h"
#include "triggers/midimessage.h"
#include "triggers/seriallines.h"
#include "triggers/triggercontroller.h"
#include "triggers/triggersource.h"

#include <QDir>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

class ScriptedTrigger : public TriggerSource {
    Q_OBJECT
public:
    using TriggerSource::TriggerSource;
    bool start() override
    {
        if (fails)
            Q_EMIT errorOccurred(QStringLiteral("Cannot open it."));
        m_open = !fails;
        return !fails;
    }
    void stop() override {}
    bool isActive() const override { return m_open; }
    QString description() const override { return {}; }

    void lose()
    {
        m_open = false;
        Q_EMIT errorOccurred(QStringLiteral("It is gone."));
    }

    static inline bool fails = false;

private:
    bool m_open = false;
};

} // namespace

/// What starts and stops the recorder, and what deletes its files.
class TestAutomation : public QObject {
    Q_OBJECT

    /// Automatic mode, seconds of run-on, events (on, off, run-on passes, started by hand, a time), log.
    using TriggerPathsRows = Table<bool, int, QString, QString>;
    using MidiMessagesRows = Table<quint32, int, int>; // outcome: 1 on, 0 off, -1 not ours

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_settings.outputFolder = m_folder->path();
        m_settings.codec = Wav;
        m_settings.splitMinutes = 0;
        m_settings.autoMode = true;
        m_settings.schedule.setAll(false);
        m_settings.schedule.set(1, 10, true); // Tuesday
        m_settings.schedule.set(1, 11, true);
        m_recorder = std::make_unique<Recorder>(nullptr, nullptr, ScriptedCapture::environment());
        connect(m_recorder.get(), &Recorder::logMessage, this, [this](const QString& text) { m_story << text; });
        m_story.clear();
        ScriptedTrigger::fails = false;
    }

    void scheduleIsFollowed()
    {
        QDateTime now(QDate(2024, 3, 5), QTime(9, 59));
        ScheduleController controller(m_recorder.get(), nullptr, [&] { return now; });
        connect(&controller, &ScheduleController::logMessage, this, [this](const QString& text) { m_story << text; });
        const auto at = [&](int hour, int minute) {
            now.setTime(QTime(hour, minute));
            controller.evaluate();
            return std::exchange(m_story, {});
        };

        m_recorder->start("manual");
        QCOMPARE(at(9, 59), QStringList({"Recording started (manual)", "Recording stopped (scheduler)"}));
        QCOMPARE(at(10, 20), QStringList({"Scheduled block 10:20 - 12:00", "Recording started (scheduler)"}));
        QCOMPARE(at(10, 21), QStringList());
        m_recorder->stop("manual");
        QCOMPARE(at(11, 0), QStringList({"Recording stopped (manual)", "Scheduled block 11:00 - 12:00",
                                         "Recording started (scheduler)"}));
        controller.setEnabled(false);
        QCOMPARE(at(12, 0), QStringList("Scheduler disabled"));
        QVERIFY(m_recorder->isRecording());
        controller.setEnabled(true);
        controller.setEnabled(true);
        QCOMPARE(std::exchange(m_story, {}), QStringList({"Scheduler enabled", "Recording stopped (scheduler)"}));
        m_settings.schedule.setAll(true);
        controller.forceEvaluate();
        QCOMPARE(m_story, QStringList({"Scheduled block 12:00 - 13:00", "Recording started (scheduler)"}));
    }

    void scheduleRetriesAFailedStart()
    {
        m_settings.schedule.setAll(true);
        m_settings.fileTemplate = QString(300, u'x');
        ScheduleController controller(m_recorder.get());
        controller.evaluate();
        QVERIFY(!m_recorder->isRecording());
        m_settings.fileTemplate.clear();
        controller.evaluate();
        QVERIFY(m_recorder->isRecording());
    }

    void triggerPaths_data()
    {
        const TriggerPathsRows row; // it is Tuesday, 11:59; the hours 10 and 11 are marked
        const QString on = "true|Trigger on|Recording started (trigger)";
        const QString off = "|false|Trigger off|Recording stopped (trigger)";
        const QString idle = "true|Trigger on|false|Trigger off";
        const QString scheduled = "Scheduled block 11:59 - 12:00|Recording started (scheduler)|";
        row("released while idle, repeated", false, 0, "- + + - -", on + off);
        row("run-on", false, 1, "+ - hold", on + off);
        row("on again within the run-on", false, 1, "+ - + hold", on);
        row("already recording", false, 0, "manual +", "Recording started|true|Trigger on");
        row("marked hours mean nothing by hand", false, 0, "12:00 + 12:01", on);
        row("in a marked hour", true, 0, "+ -", on + off);
        row("a marked hour goes on without it", true, 0, "+ - 11:59", on + off + u'|' + scheduled.chopped(1));
        row("before a marked hour", true, 0, "09:59 + 11:59 -", "true|Trigger on|" + scheduled + off.mid(1));
        row("in no marked hour", true, 0, "12:00 + -", idle);
        row("in no marked hour, stops what records", true, 0, "12:00 manual +",
            "Recording started|true|Trigger on|Recording stopped (trigger)");
        row("still on at the end of the block", true, 0, "+ 12:00 12:01 -",
            on + "|Recording stopped (scheduler)|false|Trigger off");
        row("released at the end of the block, before the schedule looks", true, 0, "+ 12:00? -", on + off);
        row("run-on over the end of the block", true, 1, "+ - 12:00 hold",
            on + "|Recording stopped (scheduler)|false|Trigger off");
        row("on again beyond the end of the block", true, 1, "+ - 12:00? + hold - hold", on + off);
    }
    void triggerPaths()
    {
        const auto [autoMode, hold, events, story] = TriggerPathsRows::fetch();
        m_settings.autoMode = autoMode;
        m_settings.holdSeconds = hold;
        QDateTime now(QDate(2024, 3, 5), QTime(11, 59));
        const auto clock = [&] { return now; };
        ScheduleController schedule(m_recorder.get(), nullptr, clock);
        connect(&schedule, &ScheduleController::logMessage, this, [this](const QString& text) { m_story << text; });
        QPointer<ScriptedTrigger> source;
        TriggerController controller(
            m_recorder.get(), nullptr, [&](int, QObject* parent) { return source = new ScriptedTrigger(parent); },
            clock);
        connect(&controller, &TriggerController::logMessage, this, [this](const QString& text) { m_story << text; });
        connect(&controller, &TriggerController::triggerStateChanged, this,
                [this](bool on) { m_story << (on ? "true" : "false"); });
        controller.reload();

        for (const QString& event : events.split(u' ')) {
            if (event == "+") {
                Q_EMIT source->triggeredOn();
            } else if (event == "-") {
                Q_EMIT source->triggeredOff();
            } else if (event == "hold") {
                QTest::qWait(1500);
            } else if (event == "manual") {
                m_recorder->start();
            } else {
                now.setTime(QTime::fromString(event.left(5), "HH:mm"));
                if (!event.endsWith(u'?')) // the schedule looks every few seconds
                    schedule.evaluate();
            }
        }
        QCOMPARE(m_story.join(u'|'), story);

        // A rebuilt trigger forgets its state without a word, and the old source has no say any more.
        const bool recording = m_recorder->isRecording();
        m_story.clear();
        const QPointer<ScriptedTrigger> old = source;
        controller.reload();
        Q_EMIT old->triggeredOn();
        QVERIFY(m_story.isEmpty() && !controller.isActive());
        QCOMPARE(m_recorder->isRecording(), recording);
    }

    void triggerThatCannotOpen()
    {
        ScriptedTrigger::fails = true;
        TriggerController controller(m_recorder.get(), nullptr,
                                     [](int, QObject* parent) { return new ScriptedTrigger(parent); });
        QSignalSpy lines(&controller, &TriggerController::logMessage);
        QSignalSpy errors(&controller, &TriggerController::errorOccurred);
        controller.reload();
        QCOMPARE(lines, (QList<QVariantList>{{"Cannot open it."}}));
        QCOMPARE(errors, lines);
        QVERIFY(!controller.hasSource());
        QVERIFY(controller.isConfigured() && !controller.isUpToDate()); // not none; saving again tries again
        QCOMPARE(controller.problem(), "Cannot open it.");
        controller.onTriggeredOn();
        QVERIFY(!m_recorder->isRecording());
        QVERIFY(!TriggerController::createSource(4, nullptr));
    }

    /// It keeps what it had, and is opened again every 5 seconds without a further word until it is back.
    void triggerThatIsLost()
    {
        m_settings.autoMode = false;
        QPointer<ScriptedTrigger> source;
        TriggerController controller(m_recorder.get(), nullptr,
                                     [&](int, QObject* parent) { return source = new ScriptedTrigger(parent); });
        QSignalSpy lines(&controller, &TriggerController::logMessage);
        QSignalSpy errors(&controller, &TriggerController::errorOccurred);
        controller.reload();
        Q_EMIT source->triggeredOn();
        ScriptedTrigger::fails = true;
        lines.clear();
        source->lose();
        QCOMPARE(lines, (QList<QVariantList>{{"It is gone."}}));
        QVERIFY(!controller.isOn() && controller.isUpToDate());
        QTest::qWait(5500); // one try that fails
        ScriptedTrigger::fails = false;
        QTRY_COMPARE_WITH_TIMEOUT(lines.size(), 2, 8000);
        QVERIFY(lines.last().first().toString().startsWith("The trigger is back"));
        QCOMPARE(errors.size(), 1);
        QVERIFY(controller.isOn());
        QVERIFY2(m_recorder->isRecording() && m_story == QStringList("Recording started (trigger)"),
                 qPrintable(m_story.join(u'|')));
        m_settings.onCommand += u'x';
        QVERIFY(!controller.isUpToDate());
        m_settings.onCommand.chop(1);
        ++m_settings.holdSeconds;
        QVERIFY(controller.isUpToDate());
    }

    /// A coarse timer ends on the half second where that is within 5 % of its time.
    void runOnIsExact()
    {
        m_settings.autoMode = false;
        m_settings.holdSeconds = 2;
        QPointer<ScriptedTrigger> source;
        TriggerController controller(nullptr, nullptr,
                                     [&](int, QObject* parent) { return source = new ScriptedTrigger(parent); });
        controller.reload();
        Q_EMIT source->triggeredOn();
        QElapsedTimer clock;
        qint64 afterMs = 0;
        connect(&controller, &TriggerController::triggerStateChanged, this, [&] { afterMs = clock.elapsed(); });
        do {
            QTest::qWait(1);
            clock.start();
        } while (clock.msecsSinceReference() % 500 < 80 || clock.msecsSinceReference() % 500 > 90);
        Q_EMIT source->triggeredOff();
        QTRY_VERIFY_WITH_TIMEOUT(afterMs > 0, 4000);
        QVERIFY2(qAbs(afterMs - 2000) <= 50, qPrintable(QString::number(afterMs)));
    }

    /// Neither schedule nor trigger starts anything, nor says so. What is wanted when the pause ends starts at once.
    void pausesQuietly()
    {
        m_settings.schedule.setAll(true);
        m_settings.holdSeconds = 0;
        ScheduleController schedule(m_recorder.get());
        connect(&schedule, &ScheduleController::logMessage, this, [this](const QString& text) { m_story << text; });
        QPointer<ScriptedTrigger> source;
        TriggerController trigger(m_recorder.get(), nullptr,
                                  [&](int, QObject* parent) { return source = new ScriptedTrigger(parent); });
        trigger.reload();
        schedule.setPaused(true);
        trigger.setPaused(true);
        schedule.evaluate();
        Q_EMIT source->triggeredOn();
        QVERIFY(trigger.isActive());
        QCOMPARE(m_story, QStringList());
        m_settings.autoMode = false;
        trigger.setPaused(false);
        QCOMPARE(std::exchange(m_story, {}), QStringList("Recording started (trigger)"));
        trigger.setPaused(true);
        Q_EMIT source->triggeredOff();
        QCOMPARE(m_story, QStringList()); // the pause has stopped the recording, or somebody started it by hand
        trigger.setPaused(false);
        m_recorder->stop("manual");
        m_story.clear();
        m_settings.autoMode = true;
        schedule.setPaused(false);
        QCOMPARE(m_story.last(), "Recording started (scheduler)");
    }

    void findsAMidiDeviceAgain_data()
    {
        const Table<QStringList, QString, int> row;
        row("as it was", {"a", "Keys:Keys 20:0"}, "Keys:Keys 20:0", 1);
        row("with other numbers", {"a 20:0", "Keys:Keys 24:0"}, "Keys:Keys 20:0", 1);
        row("of two the one with its numbers", {"Keys 20:0", "Keys 24:0"}, "Keys 24:0", 1);
        row("another one", {"Keys 2"}, "Keys 3", -1);
        row("none", {}, "Keys", -1);
    }
    void findsAMidiDeviceAgain()
    {
        const auto [names, name, index] = Table<QStringList, QString, int>::fetch();
        QCOMPARE(midiDeviceIndex(names, name), index);
    }

    void oldRecordingsGo()
    {
        m_settings.housekeepingEnabled = true;
        const QDateTime limit = QDateTime::currentDateTime().addDays(-365);
        const auto name = [&](int seconds) { return limit.addSecs(seconds).toString("yyyyMMdd-HHmmss") + ".mp3"; };
        for (const QString& file : {name(-60), name(-3600), name(60), QStringLiteral("20010101-000000.txt")})
            QVERIFY(QFile(m_folder->filePath(file)).open(QIODevice::WriteOnly));
        ArchiveIndex index;
        index.setFolder(m_folder->path());
        Housekeeper housekeeper(&index);
        QSignalSpy lines(&housekeeper, &Housekeeper::logMessage);
        const auto files = [this] { return QDir(m_folder->path()).entryList({"*.mp3", "*.txt"}).size(); };

        m_settings.housekeepingDays = 0;
        housekeeper.runNow();
        QCOMPARE(files(), 4);
        m_settings.housekeepingDays = 365;
        index.addRecord({"gone.mp3", m_folder->filePath("gone.mp3"), limit.addDays(-1), 0, 0, false}); // undeletable
        index.setOpenFile(name(60));
        housekeeper.runNow();
        QTRY_COMPARE(lines, (QList<QVariantList>{{"Deleted 2 old recording(s)"}}));
        QCOMPARE(files(), 2);
        QVERIFY2(index.records().isEmpty(), "the scan leaves out the file that is being written");

        // Switched off, or another folder, with the first of two gone: the other one stays.
        for (int i = 0; i < 2; ++i) {
            for (const QString& file : {name(-60), name(-3600)})
                QVERIFY(QFile(m_folder->filePath(file)).open(QIODevice::WriteOnly));
            m_settings.housekeepingEnabled = true;
            index.setFolder(m_folder->path());
            index.rescan();
            lines.clear();
            housekeeper.runNow();
            if (i == 0)
                m_settings.housekeepingEnabled = false;
            else
                index.setFolder({});
            QTRY_COMPARE(lines, (QList<QVariantList>{{"Deleted 1 old recording(s)"}}));
            QCOMPARE(files(), 3);
        }
    }

    void midiMessages_data()
    {
        const MidiMessagesRows row;
        row("any channel", 0x643c99, 0, 1);
        row("its channel", 0x643c99, 10, 1);
        row("another channel", 0x643c99, 1, -1);
        row("note on without velocity, the top byte says nothing", 0xff003c90, 0, 0);
        row("note off", 0x403c80, 0, 0);
        row("controller 63", 0x3f3cb0, 0, 0);
        row("controller 64", 0x403cb0, 0, 1);
        row("another note", 0x643d90, 0, -1);
        row("program change", 0x003cc0, 0, -1);
    }
    void midiMessages()
    {
        const auto [message, channel, outcome] = MidiMessagesRows::fetch();
        const auto state = midiTriggerState(message, {channel, 60});
        QCOMPARE(state ? int(*state) : -1, outcome);
    }

    void serialText()
    {
        SerialLines lines;
        QString story;
        const auto hear = [&](const QByteArray& bytes) {
            lines.append(bytes);
            while (const auto line = lines.next())
                story += "0+-"[int(serialCommand(*line, "REC ON", "rec off"))];
        };
        hear(" rec on\r\nREC");
        hear(" OFF\n\n\r\nREC  ON\nnonsense\n");
        hear(QByteArray(5000, 'x'));
        hear("REC ON\n");
        hear(QByteArray(3000, 'y') + "\nREC OFF\n");
        QCOMPARE(story, "+-0000+0-");
        QCOMPARE(serialCommand("REC ON", " REC ON", ""), SerialCommand::None);
    }

private:
    AppSettings& m_settings = AppSettings::instance();
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<Recorder> m_recorder;
    QStringList m_story;
};

QTEST_GUILESS_MAIN(TestAutomation)
#include "tst_automation.moc"
