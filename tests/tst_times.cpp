#include "engine/filenametemplate.h"
#include "engine/schedulecontroller.h"
#include "engine/segment.h"
#include "settings/appsettings.h"
#include "settings/codectable.h"
#include "support/scriptedcapture.h"
#include "support/table.h"

#include <QSignalSpy>
#include <QTemporaryDir>

/// When recordings begin and end by the clock, and the names that they get from it.
class TestTimes : public QObject {
    Q_OBJECT

    using NameRows = Table<QString, int, QString>;
    using SegmentEndRows = Table<QString, int, bool, QString>;
    using ClockChangeRows = Table<qint64, int>;
    using BlockEndRows = Table<QString, QString, QString>;
    using NightRows = Table<QString, QString>; // beginning, and for each half hour whether it is recorded

private Q_SLOTS:
    void name_data()
    {
        const NameRows row;
        row("default", FileNameTemplate::Default, 1, "20240305-070809");
        row("blank", "  ", 1, "20240305-070809");
        row("month is not half a minute", "%m%mm%%m", 1, "0308%03");
        row("serial", "x%sn", 42, "x0042");
        row("case matters, blanks stay", " %Y%D ", 1, " %Y%D ");
        row("forbidden characters go", "%d/%m\\:*?\"<>|.", 1, "0503.");
    }
    void name()
    {
        const auto [fileTemplate, serial, expected] = NameRows::fetch();
        const QDateTime start(QDate(2024, 3, 5), QTime(7, 8, 9));
        QCOMPARE(FileNameTemplate::expand(fileTemplate, start, serial), expected);
    }

    void segmentEnd_data()
    {
        const SegmentEndRows row;
        row("on the boundary", "2024-03-05T14:00:00", 60, true, "2024-03-05T15:00:00");
        row("a second before", "2024-03-05T14:59:59", 60, true, "2024-03-05T15:00:00");
        row("grid restarts at midnight", "2024-03-05T23:40:00", 50, true, "2024-03-06T00:10:00");
        row("longer than a day", "2024-03-05T23:40:00", 3000, true, "2024-03-07T02:00:00");
        row("clock put forward: still on the grid", "2024-03-31T00:00:00", 360, true, "2024-03-31T06:00:00");
        row("not aligned", "2024-03-05T14:59:59", 60, false, "2024-03-05T15:59:59");
        row("not split", "2024-03-05T14:59:59", 0, true, "");
    }
    void segmentEnd()
    {
        const auto [start, minutes, align, expected] = SegmentEndRows::fetch();
        QCOMPARE(Segment::end(QDateTime::fromString(start, Qt::ISODate), minutes, align).toString(Qt::ISODate),
                 expected);
    }

    void clockChange_data()
    {
        const ClockChangeRows row;
        // Forward at 02:00 on 31 March 2024, back at 03:00 on 27 October 2024.
        for (const int minutes : {15, 60, 360}) {
            row("forward " + QByteArray::number(minutes), 1711839600, minutes);
            row("back " + QByteArray::number(minutes), 1729980000, minutes);
        }
    }
    /// Through a whole day with a clock change: every segment has an end after its start, none outgrows its length, and
    /// each ends on the grid of the clock.
    void clockChange()
    {
        if (!inCentralEurope())
            QSKIP("The clock of this machine changes in other nights.");
        const auto [midnightUtc, minutes] = ClockChangeRows::fetch();
        QDateTime start = QDateTime::fromSecsSinceEpoch(midnightUtc);
        QCOMPARE(start.time(), QTime(0, 0));
        QVERIFY(start.addDays(1).offsetFromUtc() != start.offsetFromUtc());
        start = start.addSecs(5);
        for (const QDateTime midnight = start.addDays(1); start < midnight;) {
            const QDateTime end = Segment::end(start, minutes, true);
            QVERIFY2(end > start && start.secsTo(end) <= minutes * 60, qPrintable(start.toString()));
            const int minuteOfDay = end.time().hour() * 60 + end.time().minute();
            QCOMPARE(end.time().second(), 0);
            QVERIFY2(minuteOfDay % minutes == 0 || (minutes > 60 && minuteOfDay % 60 == 0), qPrintable(end.toString()));
            start = end;
        }
    }

    void grid()
    {
        Schedule schedule;
        QVERIFY(schedule.isEmpty());
        schedule.set(7, 0, true);
        schedule.toggle(0, 24);
        schedule.set(-1, 5, true);
        QVERIFY(schedule.isEmpty() && !schedule.isOn(7, 0));
        schedule.set(0, 0, true);
        schedule.toggle(6, 23);
        QCOMPARE(schedule.toString(), u'1' + QString(166, u'0') + u'1');
        QVERIFY(schedule.isActive(QDateTime(QDate(2024, 3, 4), QTime(0, 30))));
        QVERIFY(schedule.isActive(QDateTime(QDate(2024, 3, 10), QTime(23, 59))));
        QVERIFY(!schedule.isActive({}));

        QVERIFY(Schedule::fromString(QString(170, u'1')).isFull());
        Schedule monday;
        monday.setDay(0, true);
        QCOMPARE(Schedule::fromString(QString(24, u'1') + "x2 "), monday);
        monday.setDay(0, false);
        monday.setHour(5, true);
        QCOMPARE(monday.toString().count(u'1'), 7);
    }

    void blockEnd_data()
    {
        const BlockEndRows row;
        const QString tuesday = QString(34, u'0') + "11";
        row("two hours", tuesday, "2024-03-05T10:20:30", "2024-03-05T12:00:00");
        row("not scheduled", tuesday, "2024-03-05T12:00:00", "");
        row("always", QString(168, u'1'), "2024-02-06T10:20:30", "2024-02-13T11:00:00");
        row("over the week's end", u'1' + QString(166, u'0') + u'1', "2024-03-10T23:20:00", "2024-03-11T01:00:00");
    }
    void blockEnd()
    {
        const auto [grid, moment, expected] = BlockEndRows::fetch();
        const QDateTime end = Schedule::fromString(grid).blockEnd(QDateTime::fromString(moment, Qt::ISODate));
        QCOMPARE(end.toString(Qt::ISODate), expected);
    }

    void night_data()
    {
        const NightRows row; // from Saturday to Sunday; hours 23, 01, 02 and 04 are marked
        row("forward at 02:00: that hour is not there", "2024-03-30T22:30:00", "0 11 00 11 00 11 0");
        row("back at 03:00: the hour 02 is recorded twice", "2024-10-26T22:30:00", "0 11 00 11 11 11 00 11 0");
    }
    void night()
    {
        if (!inCentralEurope())
            QSKIP("The clock of this machine changes in other nights.");
        auto [from, story] = NightRows::fetch();
        QDateTime now = QDateTime::fromString(from, Qt::ISODate);
        const QTemporaryDir folder;
        AppSettings& settings = AppSettings::instance();
        settings.outputFolder = folder.path();
        settings.codec = Wav;
        settings.schedule.setAll(false);
        for (const auto& [day, hour] : {std::pair(5, 23), {6, 1}, {6, 2}, {6, 4}})
            settings.schedule.set(day, hour, true);
        Recorder recorder(nullptr, nullptr, ScriptedCapture::environment());
        ScheduleController controller(&recorder, nullptr, [&] { return now; });
        const QSignalSpy changes(&recorder, &Recorder::recordingChanged);
        QString heard;
        story.remove(u' ');
        while (heard.size() < story.size()) {
            controller.evaluate();
            heard += recorder.isRecording() ? u'1' : u'0';
            now = now.addSecs(1800);
        }
        QCOMPARE(heard, story);
        QCOMPARE(changes.size(), 6); // on and off for each block of hours
    }

private:
    static bool inCentralEurope()
    {
        constexpr qint64 Forward = 1711846800; // 2024-03-31T01:00Z
        return QDateTime::fromSecsSinceEpoch(Forward - 1).offsetFromUtc() == 3600 &&
               QDateTime::fromSecsSinceEpoch(Forward).offsetFromUtc() == 7200;
    }
};

int main(int argc, char* argv[])
{
#ifndef Q_OS_WIN // whose C library knows no rules of this kind
    qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3"); // Central Europe's, which needs no table of zones
#endif
    QCoreApplication app(argc, argv);
    TestTimes test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_times.moc"
