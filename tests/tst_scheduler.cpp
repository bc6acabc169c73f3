#include "support/table.h"
#include "ui/schedulerdialog.h"
#include "ui/schedulergrid.h"

#include <QHeaderView>
#include <QPushButton>
#include <QSignalSpy>

using Way = QList<QPoint>; // day and hour

class TestScheduler : public QObject {
    Q_OBJECT

    /// Pressed on the first cell of the way, and each of the others is one move.
    using DragRows = Table<Qt::MouseButton, Way, Way, int>; // button, way, marked afterwards, signals

    std::unique_ptr<SchedulerGrid> m_grid;

    int hours() const { return int(m_grid->schedule().toString().count(u'1')); }

private Q_SLOTS:
    void init()
    {
        m_grid = std::make_unique<SchedulerGrid>();
        m_grid->resize(400, 300); // the last hours are out of sight
        m_grid->show();
    }

    void drag_data()
    {
        const DragRows row; // Monday's first two hours are marked before
        const Way two{{0, 0}, {0, 1}};
        row("fast", Qt::LeftButton, {{6, 2}, {6, 4}}, two + Way{{6, 2}, {6, 3}, {6, 4}}, 3);
        row("outside", Qt::LeftButton, {{6, 5}, {9, 5}, {9, 20}, {6, 20}}, two + Way{{6, 5}}, 1);
        row("from a marked cell", Qt::LeftButton, {{0, 1}, {0, 0}, {0, 3}}, {}, 2);
        row("right, unmarked", Qt::RightButton, {{1, 3}, {1, 5}}, two, 0);
        row("right, on to marked", Qt::RightButton, {{0, 3}, {0, 1}}, {{0, 0}}, 1);
    }
    void drag()
    {
        const auto [button, way, expected, emitted] = DragRows::fetch();
        m_grid->setSchedule(Schedule::fromString("11"));
        const QSignalSpy changes(m_grid.get(), &SchedulerGrid::scheduleChanged);
        const int width = m_grid->columnWidth(0);
        const auto centre = [&](QPoint at) { return QPoint(at.x() * width + width / 2, at.y() * 18 + 9); };
        QTest::mousePress(m_grid->viewport(), button, {}, centre(way.first()));
        for (const QPoint& at : way.mid(1))
            QTest::mouseMove(m_grid->viewport(), centre(at));
        QTest::mouseRelease(m_grid->viewport(), button, {}, centre(way.last()));
        QTest::mousePress(m_grid->viewport(), Qt::MiddleButton, {}, centre({0, 0})); // drags nothing
        QTest::mouseMove(m_grid->viewport(), centre({3, 8}));
        QTest::mouseRelease(m_grid->viewport(), Qt::MiddleButton);

        Way green;
        for (int bit = 0; bit < Schedule::Hours; ++bit) {
            const bool on = m_grid->item(bit % 24, bit / 24)->background().color() == QColor(0xaa, 0xf5, 0xaa);
            QCOMPARE(on, m_grid->schedule().isOn(bit / 24, bit % 24));
            green += on ? Way{{bit / 24, bit % 24}} : Way{};
        }
        QCOMPARE(green, expected);
        QCOMPARE(changes.size(), emitted);
    }

    void keysHeadersAndDoubleClick()
    {
        const QSignalSpy changes(m_grid.get(), &SchedulerGrid::scheduleChanged);
        m_grid->setCurrentCell(1, 5);
        QTest::keyClick(m_grid.get(), Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(m_grid.get(), Qt::Key_Space);
        QCOMPARE(hours(), 2);
        QCOMPARE(changes.size(), 1);
        // Saturday from partial to full, to nothing and back, then an hour of which Saturday's is marked.
        for (const auto& [section, expected] : {std::pair(5, 24), {5, 0}, {5, 24}, {2, 30}, {2, 23}}) {
            const QHeaderView* header = section == 5 ? m_grid->horizontalHeader() : m_grid->verticalHeader();
            const int at = header->sectionViewportPosition(section) + 5;
            QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, section == 5 ? QPoint(at, 5) : QPoint(5, at));
            QCOMPARE(hours(), expected);
        }
        m_grid->setSchedule({}); // the second of two quick clicks has moved on to the cell above
        QTest::mouseClick(m_grid->viewport(), Qt::LeftButton, {}, m_grid->visualItemRect(m_grid->item(5, 0)).center());
        QTest::mouseDClick(m_grid->viewport(), Qt::LeftButton, {}, m_grid->visualItemRect(m_grid->item(4, 0)).center());
        QVERIFY(hours() == 2 && m_grid->schedule().isOn(0, 4));
    }

    void dialog()
    {
        SchedulerDialog dialog(Schedule::fromString("1"));
        dialog.show();
        const auto buttons = dialog.findChildren<QPushButton*>();
        for (const auto& [preset, expected] : {std::pair(1, 0), {0, 168}, {2, 55}}) {
            QTest::mouseClick(buttons.at(preset), Qt::LeftButton);
            QCOMPARE(dialog.schedule().toString().count(u'1'), expected);
        }
        QVERIFY(dialog.schedule().isOn(4, 18) && !dialog.schedule().isOn(5, 12));
        QTest::keyClick(dialog.findChild<SchedulerGrid*>(), Qt::Key_Return); // is OK, and no preset
        QCOMPARE(dialog.result(), int(QDialog::Accepted));
        QCOMPARE(dialog.schedule().toString().count(u'1'), 55);
        dialog.show();
        QTest::mouseClick(buttons.at(4), Qt::LeftButton);
        QCOMPARE(dialog.result(), int(QDialog::Rejected));
    }
};

QTEST_MAIN(TestScheduler)
#include "tst_scheduler.moc"
