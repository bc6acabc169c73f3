#pragma once

#include "settings/schedule.h"

#include <QTableWidget>

/// The week on which the operator marks the hours to record: one row per hour, one column per day (Monday first).
/// A drag with the left button gives every cell it crosses the inverse of the first one's value, one with the right
/// button clears, the space bar inverts the selection, and a click on a header inverts its day or hour.
class SchedulerGrid : public QTableWidget {
    Q_OBJECT
public:
    explicit SchedulerGrid(QWidget* parent = nullptr);

    /// Shows this schedule without emitting scheduleChanged().
    void setSchedule(const Schedule& schedule);
    const Schedule& schedule() const { return m_schedule; }

public Q_SLOTS:
    void onHorizontalHeaderClicked(int column);
    void onVerticalHeaderClicked(int row);

Q_SIGNALS:
    /// The operator changed the schedule; a drag emits this for every cell that it changes.
    void scheduleChanged();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    void addCells();
    void refresh(int day, int hour);
    void refreshAll();
    void toggleSelection();
    /// Gives the cell at this point of the viewport the value of the drag.
    void paintCell(QPoint point);
    /// Turns viewport coordinates into ones that stay with the cells when the table scrolls.
    QPoint toContents(QPoint point) const;

    Schedule m_schedule;
    bool m_dragging = false;
    bool m_dragValue = false;
    /// Where the drag is, in the coordinates of toContents().
    QPoint m_dragPosition;
};
