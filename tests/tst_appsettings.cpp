#include "settings/appsettings.h"
#include "settings/scramble.h"
#include "support/table.h"

#include <QProcess>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

constexpr char RewriteArgument[] = "--rewrite";

/// As the platform's store spells it.
QString stored(QString key)
{
#ifndef Q_OS_WIN
    key.replace(QLatin1String("general/"), QLatin1String("General/"));
#endif
    return key;
}

struct Key {
    const char* name;
    QVariant byDefault;
    QVariant other;
};

const QByteArray Bytes("\0id\xff,\n", 6);
const QString Text = QStringLiteral("@Zoë, \"x\"; C:\\y=%1 ");

/// Every key of the store.
const QList<Key> Keys{
    {"capture/backend", 0, 2},
    {"capture/deviceId", QByteArray(), Bytes},
    {"capture/deviceLabel", "", Text},
    {"capture/playbackId", QByteArray(), Bytes},
    {"capture/asio", false, true},
    {"capture/streamUrl", "", Text},
    {"capture/streamReconnect", true, false},
    {"capture/streamStall", 15, 16},
    {"levels/inputGainDb", 0.0, -3.7},
    {"levels/softLimit", true, false},
    {"format/codec", "mp3", "m4a"},
    {"format/sampleRate", 44100, 48000},
    {"format/bitrate", 64, 128},
    {"format/channels", 1, 2},
    {"format/vorbisQuality", 3, -1},
    {"output/folder", QVariant(), Text},
    {"output/template", "%y%m%d-%hh%mm%ss", Text},
    {"output/serial", 1, 9999},
    {"output/splitMinutes", 60, 0},
    {"output/alignToClock", true, false},
    {"housekeeping/enabled", true, false},
    {"housekeeping/days", 365, 30},
    {"alerts/silenceNotify", false, true},
    {"alerts/email", "", Text},
    {"alerts/subject", "Tidewell - Silence", Text},
    {"alerts/seconds", 10, 60},
    {"alerts/thresholdDb", -60.0, -41.3},
    {"alerts/smtpHost", "", Text},
    {"alerts/smtpUser", "", Text},
    {"alerts/smtpPass", "", "PgQRAAoD"}, // "secret"
    {"alerts/smtpPort", 465, 587},
    {"alerts/from", "", Text},
    {"alerts/tls", true, false},
    {"trigger/kind", 0, 3},
    {"trigger/serialPort", "", Text},
    {"trigger/baud", 9600, 19200},
    {"trigger/line", 0, 2},
    {"trigger/invert", false, true},
    {"trigger/onCommand", "REC ON", Text},
    {"trigger/offCommand", "REC OFF", Text},
    {"trigger/midiDevice", 0, 1},
    {"trigger/midiDeviceName", "", Text},
    {"trigger/midiChannel", 0, 16},
    {"trigger/midiNumber", 60, 61},
    {"trigger/holdSeconds", 5, 0},
    {"updates/url", "", Text},
    {"updates/checkAtStartup", true, false},
    {"updates/lastCheck", QDateTime(), QDateTime(QDate(2026, 11, 22), QTime(3, 4, 5))},
    {"updates/skippedVersion", "", Text},
    {"general/startWithSystem", false, true},
    {"general/closeAction", 0, 2},
    {"general/theme", 0, 2},
    {"general/taskbarButton", true, false},
    {"general/restartOnCrash", false, true},
    {"general/language", "", "es"},
    {"state/auto", true, false},
    {"state/schedule", QString(168, u'1'), QString(167, u'0') + u'1'},
    {"state/geometry", QByteArray(), Bytes},
    {"capture/firstChannel", 0, 64},
    {"capture/channelCount", 2, 1},
    {"housekeeping/deleteWhenFull", false, true},
    {"housekeeping/keepDays", 42, 7},
    {"copy/enabled", false, true},
    {"copy/folder", "", Text},
    {"copy/days", 365, 30},
    {"alarms/noAudio", true, false},
    {"alarms/noAudioAfter", 10, 7},
    {"alarms/silence", true, false},
    {"alarms/silenceAfter", 0, 7},
    {"alarms/channelDead", true, false},
    {"alarms/channelDeadAfter", 60, 7},
    {"alarms/levelStuck", true, false},
    {"alarms/levelStuckAfter", 300, 7},
    {"alarms/notRecording", true, false},
    {"alarms/notRecordingAfter", 10, 7},
    {"alarms/cannotWrite", true, false},
    {"alarms/cannotWriteAfter", 0, 7},
    {"alarms/diskLow", true, false},
    {"alarms/diskLowAfter", 0, 7},
    {"alarms/clockWrong", true, false},
    {"alarms/clockWrongAfter", 0, 7},
    {"alarms/copyBehind", true, false},
    {"alarms/copyBehindAfter", 3600, 7},
    {"alarms/triggerLost", true, false},
    {"alarms/triggerLostAfter", 10, 7},
    {"alarms/restarted", true, false},
    {"alarms/restartedAfter", 0, 7},
    {"alarms/diskLowHours", 72, 24},
    {"alarms/mail", false, true},
    {"alarms/url", "", Text},
    {"alarms/heartbeatUrl", "", Text},
};

} // namespace

class TestAppSettings : public QObject {
    Q_OBJECT

    using OddValuesRows = Table<QString, QVariant, QVariant>;

private Q_SLOTS:
    void cleanup() { QSettings().clear(); }
    void defaults()
    {
        AppSettings& settings = AppSettings::instance();
        settings.load();
        QSignalSpy changed(&settings, &AppSettings::changed);
        settings.save();
        QCOMPARE(changed.size(), 1);
        const QSettings store;
        QCOMPARE(store.allKeys().size(), Keys.size());
        for (const Key& key : Keys) {
            if (key.byDefault.isValid())
                QVERIFY2(store.value(stored(key.name)) == key.byDefault, key.name);
        }
        QVERIFY(store.value("output/folder").toString().endsWith("Log"));
    }

    /// Written here under each key's own name, read and written by another process, and compared here.
    void everyKeySurvivesTheProcess()
    {
        {
            QSettings store;
            for (const Key& key : Keys)
                store.setValue(stored(key.name), key.other);
        }
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedChannels);
        process.start(QCoreApplication::applicationFilePath(), {RewriteArgument, QCoreApplication::applicationName()});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitCode(), 0);
        QSettings store;
        store.sync();
        QCOMPARE(store.allKeys().size(), Keys.size());
        for (const Key& key : Keys) {
            QVariant value = store.value(stored(key.name));
            QVERIFY2(value.convert(key.other.metaType()) && value == key.other, key.name);
        }
    }

    /// Values that no version wrote, and what is stored in their place once they were loaded.
    void oddValues_data()
    {
        const OddValuesRows row;
        row("too few channels", "format/channels", -5, 1);
        row("too many channels", "format/channels", 99, 2);
        row("codec in capitals", "format/codec", "AAC", "m4a");
        row("codec unknown", "format/codec", "opus", "mp3");
        row("no number", "format/bitrate", "loud", 0);
        row("no such theme", stored("general/theme"), 7, 0);
        row("short schedule", "state/schedule", QString(24, u'1') + "x1",
            QString(24, u'1') + "01" + QString(142, u'0'));
    }
    void oddValues()
    {
        const auto [key, odd, rewritten] = OddValuesRows::fetch();
        QSettings().setValue(key, odd);
        AppSettings::instance().load();
        AppSettings::instance().save();
        QCOMPARE(QSettings().value(key), rewritten);
    }

    void passwordIsScrambled()
    {
        const QString password = QStringLiteral("Grüße, quite a long pässwörd €");
        QCOMPARE(Scramble::scramble("secret"), "PgQRAAoD");
        QCOMPARE(Scramble::unscramble(Scramble::scramble(password)), password);
    }
};

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    // The store is the real one of the platform, under a name that no installed program uses.
    QCoreApplication::setOrganizationName(QStringLiteral("Quayside"));
    QCoreApplication::setApplicationName(
        app.arguments().value(2, QStringLiteral("TidewellTest-%1").arg(QCoreApplication::applicationPid())));
    if (app.arguments().value(1) == RewriteArgument) {
        AppSettings::instance().load();
        QSettings().clear();
        AppSettings::instance().save();
        return 0;
    }
    const QTemporaryDir folder;
    qputenv("XDG_CONFIG_HOME", folder.path().toUtf8());
    TestAppSettings test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_appsettings.moc"
