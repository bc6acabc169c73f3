#include "app/appsettings.h"
#include "archive/archiveindex.h"
#include "archive/housekeeper.h"
#include "encode/codecs.h"
#include "engine/schedulecontroller.h"
#include "support/scriptedcapture.h"
#include "support/table.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

using namespace std::chrono_literals;

namespace {

constexpr char UntilArgument[] = "--until";

/// Runs the engines until that moment of the clock, in the folder, and prints what happened and when; on standard error
/// the minutes that each recording took.
int runEngines(const QDateTime& until, const QString& folder)
{
    AppSettings& settings = AppSettings::instance();
    settings.outputFolder = folder;
    settings.codec = Wav;
    settings.splitMinutes = 0;
    settings.schedule.setAll(false);
    for (const auto& [day, hour] : {std::pair(5, 23), {6, 1}, {6, 2}, {6, 4}})
        settings.schedule.set(day, hour, true);
    settings.housekeepingDays = 1;

    ArchiveIndex archive;
    archive.setFolder(folder);
    Recorder recorder(&archive, nullptr, {QDateTime::currentMSecsSinceEpoch, [] {
                                              return new TimedCapture(5ms, [] { return QByteArray(3200, '\1'); });
                                          }});
    ScheduleController controller(&recorder);
    Housekeeper housekeeper(&archive);
    const auto tell = [](const QString& text) {
        std::puts(qPrintable(QDateTime::currentDateTime().toString("HH ") + text));
    };
    // How long it recorded, by the clock.
    qint64 since = 0;
    QObject::connect(&recorder, &Recorder::recordingChanged, &recorder, [&](bool on) {
        const qint64 now = QDateTime::currentSecsSinceEpoch();
        if (!on)
            std::fprintf(stderr, "%lld\n", static_cast<long long>((now - since + 30) / 60));
        since = now;
    });
    QObject::connect(&recorder, &Recorder::logMessage, &recorder, tell);
    QObject::connect(&recorder, &Recorder::errorOccurred, &recorder, tell);
    QObject::connect(&housekeeper, &Housekeeper::logMessage, &housekeeper, tell);

    // The engines' own timers would look every few hours of this clock.
    QTimer look;
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        controller.evaluate();
        housekeeper.runNow();
        if (QDateTime::currentDateTime() >= until)
            QCoreApplication::exit();
    });
    look.start(5ms);
    return QCoreApplication::exec();
}

} // namespace

/// The clock moves for real: half an hour a second, over midnight and through both daylight-saving changes.
class TestClock : public QObject {
    Q_OBJECT

    using NightRows = Table<QString, QString, QString, QList<qint64>>;

private Q_SLOTS:
    void night_data()
    {
        const NightRows row;
        const QString untilMidnight = "23 Recording started (scheduler)|00 Recording stopped (scheduler)|"
                                      "00 Deleted 1 old recording(s)|01 Recording started (scheduler)|";
        const QString tillMorning = "03 Recording stopped (scheduler)|04 Recording started (scheduler)|"
                                    "05 Recording stopped (scheduler)|";
        row("forward at 02:00: that hour is not there", "2024-03-30 22:40:00", "2024-03-31T05:10:00",
            untilMidnight + tillMorning, QList<qint64>({60, 60, 60}));
        row("back at 03:00: the hour 02 is recorded twice", "2024-10-26 22:40:00", "2024-10-27T05:10:00",
            untilMidnight + tillMorning, QList<qint64>({60, 180, 60}));
    }
    void night()
    {
        const auto [from, until, story, minutes] = NightRows::fetch();
        QTemporaryDir folder;
        // A day and some minutes before midnight: due soon after midnight.
        QFile old(folder.filePath(QString(from.left(10)).remove(u'-') + "-002000.wav"));
        QVERIFY(old.open(QIODevice::WriteOnly));
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("TZ", "Europe/Berlin");
        environment.insert("LD_PRELOAD", "/usr/$LIB/faketime/libfaketime.so.1"); // the loader knows what $LIB is
        environment.insert("FAKETIME", '@' + from + " x1800");
        environment.insert("DONT_FAKE_MONOTONIC", "1");
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {UntilArgument, until, folder.path()});
        QVERIFY(process.waitForFinished(60'000));
        const QByteArray errors = process.readAllStandardError(); // also that there is no such library
        const QString told = QString::fromUtf8(process.readAllStandardOutput()).replace(u'\n', u'|');
        QVERIFY2(told == story, qPrintable(told + errors));
        QList<qint64> heard;
        for (const QByteArray& line : errors.trimmed().split('\n'))
            heard << line.toLongLong();
        QCOMPARE(heard.size(), minutes.size());
        for (qsizetype i = 0; i < heard.size(); ++i)
            QVERIFY2(qAbs(heard[i] - minutes[i]) <= 25, qPrintable(QString::number(heard[i])));
        QVERIFY(!old.exists());
    }
};

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == UntilArgument)
        return runEngines(QDateTime::fromString(app.arguments().value(2), Qt::ISODate), app.arguments().value(3));
    TestClock test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_clock_linux.moc"
