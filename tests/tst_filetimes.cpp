#include "engine/filenametemplate.h"
#include "engine/segment.h"
#include "support/table.h"

/// How files are named and where they are cut.
class TestFileTimes : public QObject {
    Q_OBJECT

    using NameRows = Table<QString, int, QString>;
    using SegmentEndRows = Table<QString, int, bool, QString>;

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
        row("not aligned", "2024-03-05T14:59:59", 60, false, "2024-03-05T15:59:59");
        row("not split", "2024-03-05T14:59:59", 0, true, "");
    }
    void segmentEnd()
    {
        const auto [start, minutes, align, expected] = SegmentEndRows::fetch();
        QCOMPARE(Segment::end(QDateTime::fromString(start, Qt::ISODate), minutes, align).toString(Qt::ISODate),
                 expected);
    }
};

QTEST_GUILESS_MAIN(TestFileTimes)
#include "tst_filetimes.moc"
