#include "ui/schedulerdialog.h"
#include "ui/schedulergrid.h"

#include <QHeaderView>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

/// The hours that are marked, as "day.hour" and in the order of the week.
QString marked(const Schedule& schedule)
{
    QStringList cells;
    for (int bit = 0; bit < Schedule::Hours; ++bit) {
        if (schedule.isOn(bit / Schedule::HoursPerDay, bit % Schedule::HoursPerDay))
            cells.append(QStringLiteral("%1.%2").arg(bit / Schedule::HoursPerDay).arg(bit % Schedule::HoursPerDay));
    }
    return cells.join(u' ');
}

} // namespace

class TestScheduler : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void drag_data()
    {
        QTest::addColumn<Qt::MouseButton>("button");
        QTest::addColumn<QList<QPoint>>("way"); // day, hour: pressed on the first, and each of the others one move
        QTest::addColumn<QString>("expected"); // Monday's first two hours are marked before
        QTest::addColumn<int>("emitted");
        const QString two = QStringLiteral("0.0 0.1");
        const auto left = Qt::LeftButton;
        const auto right = Qt::RightButton;
        QTest::newRow("cell by cell") << left << QList<QPoint>{{1, 3}, {1, 4}, {2, 4}} << two + " 1.3 1.4 2.4" << 3;
        QTest::newRow("fast") << left << QList<QPoint>{{6, 20}, {6, 23}} << two + " 6.20 6.21 6.22 6.23" << 4;
        QTest::newRow("leaves the table") << left << QList<QPoint>{{6, 5}, {9, 5}, {9, 7}} << two + " 6.5" << 1;
        QTest::newRow("from a marked cell") << left << QList<QPoint>{{0, 1}, {0, 0}, {0, 3}} << QString() << 2;
        QTest::newRow("right, unmarked") << right << QList<QPoint>{{1, 3}, {1, 5}} << two << 0;
        QTest::newRow("right, on to marked") << right << QList<QPoint>{{0, 3}, {0, 1}} << "0.0" << 1;
        QTest::newRow("middle") << Qt::MiddleButton << QList<QPoint>{{0, 1}, {0, 0}} << two << 0;
    }
    void drag()
    {
        QFETCH(Qt::MouseButton, button);
        QFETCH(QList<QPoint>, way);
        SchedulerGrid grid;
        grid.resize(400, 480);
        grid.show();
        grid.setSchedule(Schedule::fromString("11"));
        const QSignalSpy changes(&grid, &SchedulerGrid::scheduleChanged);
        const QSize cell = grid.visualItemRect(grid.item(0, 0)).size();
        const auto centre = [&](QPoint at) {
            return QPoint(at.x() * (cell.width() + 1) + cell.width() / 2, at.y() * 18 + 9);
        };
        QTest::mousePress(grid.viewport(), button, {}, centre(way.first()));
        for (const QPoint& at : way.mid(1))
            QTest::mouseMove(grid.viewport(), centre(at));
        QTest::mouseRelease(grid.viewport(), button, {}, centre(way.last()));
        QTest::mouseMove(grid.viewport(), centre({3, 20})); // no longer dragging
        QTEST(marked(grid.schedule()), "expected");
        QTEST(int(changes.size()), "emitted");
        for (int bit = 0; bit < Schedule::Hours; ++bit)
            QCOMPARE(grid.item(bit % 24, bit / 24)->background().color().name(),
                     grid.schedule().isOn(bit / 24, bit % 24) ? "#aaf5aa" : "#ffffff");
    }

    void keysHeadersAndDoubleClick()
    {
        SchedulerGrid grid;
        grid.resize(400, 480);
        grid.show();
        const QSignalSpy changes(&grid, &SchedulerGrid::scheduleChanged);
        grid.setCurrentCell(1, 5);
        QTest::keyClick(&grid, Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(&grid, Qt::Key_Space);
        QCOMPARE(marked(grid.schedule()), "5.1 5.2");
        QCOMPARE(changes.size(), 1);

        const auto click = [](QHeaderView* header, int section) {
            const int at = header->sectionViewportPosition(section) + header->sectionSize(section) / 2;
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                              header->orientation() == Qt::Horizontal ? QPoint(at, 5) : QPoint(5, at));
        };
        for (const int hours : {24, 0, 24}) {
            click(grid.horizontalHeader(), 5);
            QCOMPARE(grid.schedule().toString().count(u'1'), hours);
        }
        for (const int hours : {30, 23}) { // Saturday's hour is marked, then all seven are
            click(grid.verticalHeader(), 2);
            QCOMPARE(grid.schedule().toString().count(u'1'), hours);
        }

        grid.setSchedule({}); // the second of two quick clicks has moved on to the cell above
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.visualItemRect(grid.item(5, 0)).center());
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, {}, grid.visualItemRect(grid.item(4, 0)).center());
        QCOMPARE(marked(grid.schedule()), "0.4 0.5");
    }

    void dialog()
    {
        const Schedule saved = Schedule::fromString(QString(168, u'1'));
        SchedulerDialog dialog(saved);
        dialog.show();
        for (const auto& [caption, hours] :
             {std::pair("Clear a&ll", 0), {"Record &always", 168}, {"&Office hours", 55}}) {
            for (auto* button : dialog.findChildren<QPushButton*>()) {
                if (button->text() == QLatin1String(caption))
                    QTest::mouseClick(button, Qt::LeftButton);
            }
            QCOMPARE(dialog.schedule().toString().count(u'1'), hours);
        }
        QVERIFY(dialog.schedule().isOn(4, 18) && !dialog.schedule().isOn(5, 12));
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
        QVERIFY(saved.isFull());
    }
};

QTEST_MAIN(TestScheduler)
#include "tst_scheduler.moc"
