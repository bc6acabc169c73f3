#pragma once

#include "settings/schedule.h"

#include <QDialog>

class SchedulerGrid;

/// Edits a copy of a schedule; the caller reads schedule() once exec() has returned Accepted.
class SchedulerDialog : public QDialog {
    Q_OBJECT
public:
    explicit SchedulerDialog(const Schedule& schedule, QWidget* parent = nullptr);

    Schedule schedule() const;

private:
    SchedulerGrid* m_grid;
};
