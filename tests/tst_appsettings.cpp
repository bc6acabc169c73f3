#include "app/appsettings.h"

#include <QProcess>
#include <QSettings>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>

namespace {

constexpr char PrintArgument[] = "--print";

/// The store is the real one of the platform, under a name that no installed program uses.
void useStore(const QString& name, const QString& folder)
{
    QCoreApplication::setOrganizationName(QStringLiteral("Quayside"));
    QCoreApplication::setApplicationName(name);
    QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
}

QString story(const AppSettings& s)
{
    QStringList list;
    const auto add = [&list](const auto&... values) { (list << ... << QVariant::fromValue(values).toString()); };
    add(s.backend, s.deviceId, s.deviceLabel, s.playbackId, s.asio, s.streamUrl, s.streamReconnect, s.streamStall);
    add(s.inputGainDb, s.softLimit, s.codec, s.sampleRate, s.bitrate, s.channels, s.vorbisQuality, s.outputFolder);
    add(s.fileTemplate, s.fileSerial, s.splitMinutes, s.alignToClock, s.housekeepingEnabled, s.housekeepingDays);
    add(s.silenceNotify, s.alertEmail, s.alertSubject, s.silenceSeconds, s.silenceThresholdDb, s.smtpHost, s.smtpUser);
    add(s.smtpPass, s.smtpPort, s.smtpFrom, s.smtpTls, s.triggerKind, s.serialPort, s.serialBaud, s.serialLine);
    add(s.serialInvert, s.onCommand, s.offCommand, s.midiDevice, s.midiDeviceName, s.midiChannel, s.midiNumber);
    add(s.holdSeconds, s.updateUrl, s.checkAtStartup, s.lastCheck, s.skippedVersion, s.startWithSystem, s.closeAction);
    add(s.theme, s.taskbarButton, s.restartOnCrash, s.language, s.autoMode, s.schedule.toString(), s.geometry.toHex());
    return list.join(u'\n');
}

/// Gives every field a value that is not its default.
void changeEverything(AppSettings& s)
{
    for (int* number :
         {&s.backend, &s.streamStall, &s.sampleRate, &s.bitrate, &s.vorbisQuality, &s.fileSerial, &s.splitMinutes,
          &s.housekeepingDays, &s.silenceSeconds, &s.smtpPort, &s.triggerKind, &s.serialBaud, &s.serialLine,
          &s.midiDevice, &s.midiChannel, &s.midiNumber, &s.holdSeconds, &s.closeAction, &s.theme})
        *number += 1;
    for (bool* flag : {&s.asio, &s.streamReconnect, &s.softLimit, &s.alignToClock, &s.housekeepingEnabled,
                       &s.silenceNotify, &s.smtpTls, &s.serialInvert, &s.checkAtStartup, &s.startWithSystem,
                       &s.taskbarButton, &s.restartOnCrash, &s.autoMode})
        *flag = !*flag;
    int n = 0;
    for (QString* text : {&s.deviceLabel, &s.streamUrl, &s.outputFolder, &s.fileTemplate, &s.alertEmail,
                          &s.alertSubject, &s.smtpHost, &s.smtpUser, &s.smtpPass, &s.smtpFrom, &s.serialPort,
                          &s.onCommand, &s.offCommand, &s.midiDeviceName, &s.updateUrl, &s.skippedVersion, &s.language})
        *text = QStringLiteral("@Zoë, \"%1\"; C:\\x=%2 ").arg(++n).arg(u'%');
    s.deviceId = QByteArray("\0id\xff,\n", 6);
    s.playbackId = "{0.0.0}.{x}";
    s.geometry = QByteArray::fromHex("00ff010d0a");
    s.inputGainDb = -3.7;
    s.silenceThresholdDb = -41.3;
    s.codec = 4;
    s.channels = 2;
    s.lastCheck = QDateTime(QDate(2026, 11, 22), QTime(3, 4, 5));
    s.schedule.set(6, 23, false);
}

} // namespace

class TestAppSettings : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { QSettings().clear(); }
    void defaultsOfAFirstRun();
    void everyKeySurvivesTheProcess_data();
    void everyKeySurvivesTheProcess();
    void oddValues_data();
    void oddValues();
    void passwordIsScrambled();

private:
    static QString anotherProcessReads()
    {
        QProcess reader;
        reader.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        reader.start(QCoreApplication::applicationFilePath(),
                     {PrintArgument, QCoreApplication::applicationName(), storeFolder->path()});
        reader.waitForFinished();
        return QString::fromUtf8(QByteArray::fromHex(reader.readAllStandardOutput().trimmed()));
    }

public:
    static inline QTemporaryDir* storeFolder = nullptr;
};

void TestAppSettings::defaultsOfAFirstRun()
{
    AppSettings& settings = AppSettings::instance();
    const QString before = story(settings);
    settings.load();
    QCOMPARE(story(settings), before);
    QVERIFY(settings.schedule.isFull());
    QVERIFY(settings.outputFolder.endsWith("Log"));
}

void TestAppSettings::everyKeySurvivesTheProcess_data()
{
    QTest::addColumn<bool>("change");
    QTest::newRow("defaults, with empty texts and no date") << false;
    QTest::newRow("everything else") << true;
}

void TestAppSettings::everyKeySurvivesTheProcess()
{
    QFETCH(bool, change);
    AppSettings& settings = AppSettings::instance();
    const QString defaults = story(settings);
    if (change) {
        changeEverything(settings);
        const QStringList was = defaults.split(u'\n');
        const QStringList is = story(settings).split(u'\n');
        // The device's id has a line break of its own.
        QCOMPARE(is.size(), was.size() + 1);
        for (qsizetype i = 3; i < was.size(); ++i)
            QVERIFY2(was[i] != is[i + 1], qPrintable(is[i + 1]));
    }
    QSignalSpy changed(&settings, &AppSettings::changed);
    settings.save();
    QCOMPARE(changed.size(), 1);
    QCOMPARE(anotherProcessReads(), story(settings));
}

void TestAppSettings::oddValues_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int AppSettings::*>("field");
    QTest::addColumn<int>("loaded");
    const auto row = [](const char* name, const QString& key, const QVariant& stored, int AppSettings::*field,
                        int loaded) { QTest::newRow(name) << key << stored << field << loaded; };
    row("channels 0", "format/channels", 0, &AppSettings::channels, 1);
    row("channels -5", "format/channels", -5, &AppSettings::channels, 1);
    row("channels 99", "format/channels", 99, &AppSettings::channels, 2);
    row("codec in capitals", "format/codec", "AAC", &AppSettings::codec, 4);
    row("codec unknown", "format/codec", "opus", &AppSettings::codec, 0);
    row("no number", "format/bitrate", "loud", &AppSettings::bitrate, 0);
#ifdef Q_OS_WIN
    row("no such theme", "general/theme", 7, &AppSettings::theme, 0);
#else
    row("no such theme", "General/theme", 7, &AppSettings::theme, 0);
#endif
}

void TestAppSettings::oddValues()
{
    QFETCH(QString, key);
    QFETCH(QVariant, stored);
    QFETCH(int AppSettings::*, field);
    QSettings().setValue(key, stored);
    AppSettings& settings = AppSettings::instance();
    settings.*field = 1;
    settings.load();
    QTEST(settings.*field, "loaded");
}

void TestAppSettings::passwordIsScrambled()
{
    const QString password = QStringLiteral("Grüße, quite a long pässwörd €");
    QCOMPARE(Scramble::scramble("secret"), QString::fromLatin1(QByteArray::fromHex("3e0411000a03").toBase64()));
    QCOMPARE(Scramble::unscramble(Scramble::scramble(password)), password);
    QCOMPARE(Scramble::scramble({}), QString(""));
}

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == PrintArgument) {
        useStore(app.arguments().value(2), app.arguments().value(3));
        AppSettings::instance().load();
        std::puts(story(AppSettings::instance()).toUtf8().toHex().constData());
        return 0;
    }
    QTemporaryDir folder;
    useStore(QStringLiteral("TidewellTest-%1").arg(QCoreApplication::applicationPid()), folder.path());
    TestAppSettings::storeFolder = &folder;
    TestAppSettings test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_appsettings.moc"
