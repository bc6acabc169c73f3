#include "app/appsettings.h"
#include "archive/archiveindex.h"
#include "archive/housekeeper.h"
#include "encode/codecs.h"
#include "engine/schedulecontroller.h"
#include "support/scriptedcapture.h"
#include "support/table.h"
#include "triggers/midimessage.h"
#include "triggers/seriallines.h"
#include "triggers/triggercontroller.h"
#include "triggers/triggersource.h"

#include <QDir>
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
        return !fails;
    }
    void stop() override {}
    bool isActive() const override { return true; }
    QString description() const override { return {}; }

    static inline bool fails = false;
};

} // namespace

/// What starts and stops the recorder, and what deletes its files.
class TestAutomation : public QObject {
    Q_OBJECT

    using TriggerPathsRows =
        Table<bool, bool, int, QString, QString>; // events: + on, - off, h a second passes, m started by hand
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
        const TriggerPathsRows row;
        const QString on = "true|Trigger on|Recording started (trigger)";
        const QString off = "|false|Trigger off|Recording stopped (trigger)";
        row("released while idle, repeated", false, false, 0, "-++--", on + off);
        row("run-on", false, false, 1, "+-h", on + off);
        row("on again within the run-on", false, false, 1, "+-+h", on);
        row("in a scheduled hour", true, true, 0, "+-", on + off);
        row("outside of the schedule", true, false, 0, "+-", "true|Trigger on|false|Trigger off");
        row("stops outside of the schedule", true, false, 0, "m+",
            "Recording started|true|Trigger on|Recording stopped (trigger)");
        row("already recording", false, false, 0, "m+", "Recording started|true|Trigger on");
    }
    void triggerPaths()
    {
        const auto [autoMode, scheduled, hold, events, story] = TriggerPathsRows::fetch();
        m_settings.autoMode = autoMode;
        m_settings.schedule.setAll(scheduled);
        m_settings.holdSeconds = hold;
        QPointer<ScriptedTrigger> source;
        TriggerController controller(m_recorder.get(), nullptr,
                                     [&](int, QObject* parent) { return source = new ScriptedTrigger(parent); });
        connect(&controller, &TriggerController::logMessage, this, [this](const QString& text) { m_story << text; });
        connect(&controller, &TriggerController::triggerStateChanged, this,
                [this](bool on) { m_story << (on ? "true" : "false"); });
        controller.reload();

        for (const QChar event : events) {
            if (event == u'+')
                Q_EMIT source->triggeredOn();
            else if (event == u'-')
                Q_EMIT source->triggeredOff();
            else if (event == u'h')
                QTest::qWait(2000);
            else
                m_recorder->start();
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
        controller.reload();
        QCOMPARE(lines, (QList<QVariantList>{{"Cannot open it."}}));
        QVERIFY(!controller.hasSource());
        controller.onTriggeredOn();
        QVERIFY(!m_recorder->isRecording());
        QVERIFY(!TriggerController::createSource(4, nullptr));
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
        row("note on without velocity", 0x003c90, 0, 0);
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
