#include "engine/filenametemplate.h"
#include "engine/segment.h"
#include "support/table.h"

/// How files are named and where they are cut.
class TestFileTimes : public QObject {
    Q_OBJECT

    using NameRows = Table<QString, int, QString>;
    using SegmentEndRows = Table<QString, int, bool, QString>;
    using ClockChangeRows = Table<qint64, int>;

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
        row("clock goes forward", "2024-03-31T00:00:00", 360, true, "2024-03-31T06:00:00");
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
        // Europe/Berlin: forward at 02:00 on 31 March 2024, back at 03:00 on 27 October 2024.
        for (const int minutes : {15, 60, 360}) {
            row("forward " + QByteArray::number(minutes), 1711839600, minutes);
            row("back " + QByteArray::number(minutes), 1729980000, minutes);
        }
    }
    /// Through a whole day with a clock change: every segment has an end after its start, none outgrows its length, and
    /// each ends on the grid of the clock.
    void clockChange()
    {
        const auto [midnightUtc, minutes] = ClockChangeRows::fetch();
        QDateTime start = QDateTime::fromSecsSinceEpoch(midnightUtc);
        if (start.time() != QTime(0, 0) || start.addDays(1).offsetFromUtc() == start.offsetFromUtc())
            QSKIP("This system does not know the zone Europe/Berlin.");
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
};

int main(int argc, char* argv[])
{
    qputenv("TZ", "Europe/Berlin");
    TestFileTimes test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_filetimes.moc"
