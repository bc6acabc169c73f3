#include "ui/schedulergrid.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int RowHeight = 18;
constexpr QColor Marked(0xaa, 0xf5, 0xaa);
constexpr QColor Unmarked(0xff, 0xff, 0xff);

/// Lays the selection over the cell as a veil; the styles would hide with it whether the cell is marked.
class CellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        painter->fillRect(option.rect, index.data(Qt::BackgroundRole).value<QBrush>());
        const QColor highlight = option.palette.color(QPalette::Highlight);
        if (option.state & QStyle::State_Selected) {
            QColor veil = highlight;
            veil.setAlphaF(0.4F);
            painter->fillRect(option.rect, veil);
        }
        if (option.state & QStyle::State_HasFocus) {
            painter->setPen(highlight.darker(150));
            painter->drawRect(option.rect.adjusted(0, 0, -1, -1));
        }
    }
};

QString hourLabel(int hour)
{
    constexpr QChar zero(u'0');
    return QStringLiteral("%1:00 - %2:00").arg(hour, 2, 10, zero).arg((hour + 1) % Schedule::HoursPerDay, 2, 10, zero);
}

} // namespace

SchedulerGrid::SchedulerGrid(QWidget* parent) : QTableWidget(Schedule::HoursPerDay, Schedule::Days, parent)
{
    setSelectionMode(ExtendedSelection);
    setSelectionBehavior(SelectItems);
    setEditTriggers(NoEditTriggers);
    setShowGrid(true);
    setTabKeyNavigation(false); // the arrow keys walk the cells; Tab goes on to the next control
    setItemDelegate(new CellDelegate(this));

    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    horizontalHeader()->setSectionsClickable(true);
    verticalHeader()->setMinimumSectionSize(RowHeight); // or the style's own, larger one would win
    verticalHeader()->setDefaultSectionSize(RowHeight);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    verticalHeader()->setSectionsClickable(true);
    connect(horizontalHeader(), &QHeaderView::sectionClicked, this, &SchedulerGrid::onHorizontalHeaderClicked);
    connect(verticalHeader(), &QHeaderView::sectionClicked, this, &SchedulerGrid::onVerticalHeaderClicked);

    addCells();
}

void SchedulerGrid::addCells()
{
    QStringList days;
    for (int day = 0; day < Schedule::Days; ++day)
        days.append(locale().dayName(day + 1, QLocale::ShortFormat));
    QStringList hours;
    for (int hour = 0; hour < Schedule::HoursPerDay; ++hour)
        hours.append(hourLabel(hour));
    setHorizontalHeaderLabels(days);
    setVerticalHeaderLabels(hours);

    for (int day = 0; day < Schedule::Days; ++day) {
        for (int hour = 0; hour < Schedule::HoursPerDay; ++hour) {
            auto* cell = new QTableWidgetItem;
            cell->setFlags(Qt::ItemIsSelectable | Qt::ItemIsEnabled);
            setItem(hour, day, cell);
        }
    }
    refreshAll();
}

void SchedulerGrid::setSchedule(const Schedule& schedule)
{
    m_schedule = schedule;
    refreshAll();
}

void SchedulerGrid::refresh(int day, int hour)
{
    const bool on = m_schedule.isOn(day, hour);
    QTableWidgetItem* cell = item(hour, day);
    cell->setBackground(on ? Marked : Unmarked);
    // The colour is all that the eye gets; a screen reader needs words.
    const QString text = on ? tr("%1 %2: recorded") : tr("%1 %2: not recorded");
    cell->setData(Qt::AccessibleTextRole, text.arg(locale().dayName(day + 1), hourLabel(hour)));
}

void SchedulerGrid::refreshAll()
{
    for (int day = 0; day < Schedule::Days; ++day) {
        for (int hour = 0; hour < Schedule::HoursPerDay; ++hour)
            refresh(day, hour);
    }
}

void SchedulerGrid::onHorizontalHeaderClicked(int column)
{
    bool full = true;
    for (int hour = 0; hour < Schedule::HoursPerDay; ++hour)
        full = full && m_schedule.isOn(column, hour);
    m_schedule.setDay(column, !full);
    refreshAll();
    Q_EMIT scheduleChanged();
}

void SchedulerGrid::onVerticalHeaderClicked(int row)
{
    bool full = true;
    for (int day = 0; day < Schedule::Days; ++day)
        full = full && m_schedule.isOn(day, row);
    m_schedule.setHour(row, !full);
    refreshAll();
    Q_EMIT scheduleChanged();
}

void SchedulerGrid::mousePressEvent(QMouseEvent* event)
{
    const QPoint point = event->position().toPoint();
    const QModelIndex cell = indexAt(point);
    const bool left = event->button() == Qt::LeftButton;
    if (cell.isValid() && (left || event->button() == Qt::RightButton)) {
        m_dragging = true;
        m_dragValue = left && !m_schedule.isOn(cell.column(), cell.row());
        m_dragPosition = toContents(point);
        paintCell(point);
    }
    QTableWidget::mousePressEvent(event);
}

void SchedulerGrid::mouseMoveEvent(QMouseEvent* event)
{
    if (m_dragging) {
        // A fast pointer is reported every few cells only: walk the line to here in steps of at most a pixel.
        const QPoint from = m_dragPosition - toContents({});
        const QPoint way = event->position().toPoint() - from;
        const int steps = std::max(std::abs(way.x()), std::abs(way.y()));
        for (int step = 1; step <= steps; ++step)
            paintCell(from + way * (double(step) / steps));
        m_dragPosition = toContents(event->position().toPoint());
    }
    QTableWidget::mouseMoveEvent(event);
}

void SchedulerGrid::mouseReleaseEvent(QMouseEvent* event)
{
    m_dragging = false;
    QTableWidget::mouseReleaseEvent(event);
}

void SchedulerGrid::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex cell = indexAt(event->position().toPoint());
    if (!cell.isValid() || event->button() != Qt::LeftButton) {
        mousePressEvent(event); // the second of two quick right clicks is one as well
        return;
    }
    // Not passed on: where the first click hit another cell the table would make this a press, which toggles again.
    m_schedule.toggle(cell.column(), cell.row());
    refresh(cell.column(), cell.row());
    Q_EMIT scheduleChanged();
}

void SchedulerGrid::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Space && currentIndex().isValid())
        toggleSelection();
    else
        QTableWidget::keyPressEvent(event);
}

void SchedulerGrid::toggleSelection()
{
    if (selectedIndexes().isEmpty())
        selectionModel()->select(currentIndex(), QItemSelectionModel::Select); // reached by Tab, nothing chosen yet
    const bool on = !m_schedule.isOn(currentColumn(), currentRow());
    for (const QModelIndex& cell : selectedIndexes()) {
        m_schedule.set(cell.column(), cell.row(), on);
        refresh(cell.column(), cell.row());
    }
    Q_EMIT scheduleChanged();
}

void SchedulerGrid::paintCell(QPoint point)
{
    // The rows that are scrolled out of sight go on beyond the viewport.
    const QModelIndex cell = viewport()->rect().contains(point) ? indexAt(point) : QModelIndex();
    if (!cell.isValid() || m_schedule.isOn(cell.column(), cell.row()) == m_dragValue)
        return;
    m_schedule.set(cell.column(), cell.row(), m_dragValue);
    refresh(cell.column(), cell.row());
    Q_EMIT scheduleChanged();
}

QPoint SchedulerGrid::toContents(QPoint point) const
{
    return point + QPoint(horizontalOffset(), verticalOffset());
}
