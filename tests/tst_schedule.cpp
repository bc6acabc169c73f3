#include "engine/schedule.h"
#include "support/table.h"

class TestSchedule : public QObject {
    Q_OBJECT

    using BlockEndRows = Table<QString, QString, QString>;

private Q_SLOTS:
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
};

QTEST_APPLESS_MAIN(TestSchedule)
#include "tst_schedule.moc"
