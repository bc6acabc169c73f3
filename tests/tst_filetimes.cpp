#include "engine/filenametemplate.h"
#include "engine/segment.h"

#include <QTest>

/// How files are named and where they are cut.
class TestFileTimes : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void name_data();
    void name();
    void segmentEnd_data();
    void segmentEnd();
    void clockChange_data();
    void clockChange();
};

void TestFileTimes::name_data()
{
    QTest::addColumn<QString>("fileTemplate");
    QTest::addColumn<int>("serial");
    QTest::addColumn<QString>("expected");
    QTest::newRow("default") << FileNameTemplate::Default << 1 << "20240305-070809";
    QTest::newRow("blank") << "  " << 1 << "20240305-070809";
    QTest::newRow("month is not half a minute") << "%m%mm%%m" << 1 << "0308%03";
    QTest::newRow("serial") << "x%sn" << 42 << "x0042";
    QTest::newRow("case matters, blanks stay") << " %Y%D " << 1 << " %Y%D ";
    QTest::newRow("forbidden characters go") << R"(%d/%m\:*?"<>|.)" << 1 << "0503.";
}

void TestFileTimes::name()
{
    QFETCH(QString, fileTemplate);
    QFETCH(int, serial);
    const QDateTime start(QDate(2024, 3, 5), QTime(7, 8, 9));
    QTEST(FileNameTemplate::expand(fileTemplate, start, serial), "expected");
}

void TestFileTimes::segmentEnd_data()
{
    QTest::addColumn<QString>("start");
    QTest::addColumn<int>("minutes");
    QTest::addColumn<bool>("align");
    QTest::addColumn<QString>("expected");
    QTest::newRow("on the boundary") << "2024-03-05T14:00:00" << 60 << true << "2024-03-05T15:00:00";
    QTest::newRow("a second before") << "2024-03-05T14:59:59" << 60 << true << "2024-03-05T15:00:00";
    QTest::newRow("grid restarts at midnight") << "2024-03-05T23:40:00" << 50 << true << "2024-03-06T00:10:00";
    QTest::newRow("longer than a day") << "2024-03-05T23:40:00" << 3000 << true << "2024-03-07T02:00:00";
    QTest::newRow("not aligned") << "2024-03-05T14:59:59" << 60 << false << "2024-03-05T15:59:59";
    QTest::newRow("not split") << "2024-03-05T14:59:59" << 0 << true << "";
}

void TestFileTimes::segmentEnd()
{
    QFETCH(QString, start);
    QFETCH(int, minutes);
    QFETCH(bool, align);
    QTEST(Segment::end(QDateTime::fromString(start, Qt::ISODate), minutes, align).toString(Qt::ISODate), "expected");
}

void TestFileTimes::clockChange_data()
{
    QTest::addColumn<qint64>("midnightUtc");
    QTest::addColumn<int>("minutes");
    // Europe/Berlin: forward at 02:00 on 31 March 2024, back at 03:00 on 27 October 2024.
    for (const int minutes : {15, 60, 360}) {
        QTest::addRow("forward, %d minutes", minutes) << qint64(1711839600) << minutes;
        QTest::addRow("back, %d minutes", minutes) << qint64(1729980000) << minutes;
    }
}

/// Through a whole day with a clock change: every segment has an end after its start, none outgrows its length, and
/// each ends on the grid of the clock.
void TestFileTimes::clockChange()
{
    QFETCH(qint64, midnightUtc);
    QFETCH(int, minutes);
    QDateTime start = QDateTime::fromSecsSinceEpoch(midnightUtc);
    if (start.time() != QTime(0, 0) || start.addDays(1).offsetFromUtc() == start.offsetFromUtc())
        QSKIP("This system does not know the zone Europe/Berlin.");
    for (const QDateTime midnight = start.addDays(1); start < midnight;) {
        const QDateTime end = Segment::end(start, minutes, true);
        QVERIFY2(end > start && start.secsTo(end) <= minutes * 60, qPrintable(start.toString()));
        const int minuteOfDay = end.time().hour() * 60 + end.time().minute();
        QVERIFY2(minuteOfDay % minutes == 0 || (minutes > 60 && minuteOfDay % 60 == 0), qPrintable(end.toString()));
        start = end;
    }
}

int main(int argc, char* argv[])
{
    qputenv("TZ", "Europe/Berlin");
    TestFileTimes test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_filetimes.moc"
