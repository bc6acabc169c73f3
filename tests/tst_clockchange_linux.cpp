#include "engine/segment.h"
#include "support/table.h"

/// Where files are cut on a day on which the clock is put forward or back.
class TestClockChange : public QObject {
    Q_OBJECT

    using ClockChangeRows = Table<qint64, int>;

private Q_SLOTS:
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

    /// Not at 07:00, after the length of a segment.
    void endsOnTheGrid()
    {
        const QDate day(2024, 3, 31);
        QCOMPARE(Segment::end(QDateTime(day, QTime(0, 0)), 360, true), QDateTime(day, QTime(6, 0)));
    }
};

int main(int argc, char* argv[])
{
    qputenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3"); // Central Europe's, which needs no table of zones
    TestClockChange test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_clockchange_linux.moc"
