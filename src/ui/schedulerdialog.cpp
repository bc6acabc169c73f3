#include "ui/schedulerdialog.h"

#include "ui/schedulergrid.h"

#include <QDialogButtonBox>
#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

Schedule always()
{
    Schedule schedule;
    schedule.setAll(true);
    return schedule;
}

/// Monday to Friday, 08:00 to 19:00.
Schedule officeHours()
{
    Schedule schedule;
    for (int day = 0; day < 5; ++day) {
        for (int hour = 8; hour <= 18; ++hour)
            schedule.set(day, hour, true);
    }
    return schedule;
}

} // namespace

SchedulerDialog::SchedulerDialog(const Schedule& schedule, QWidget* parent)
    : QDialog(parent), m_grid(new SchedulerGrid(this))
{
    setWindowTitle(tr("Scheduler"));
    m_grid->setSchedule(schedule);

    auto* label = new QLabel(
        tr("<b>Hours to record</b> (hours marked green will be recorded)<br>Drag with the left button to mark, the "
           "right button to clear, or press the space bar to toggle the selection."));
    label->setTextFormat(Qt::RichText);
    label->setWordWrap(true);
    auto* line = new QFrame;
    line->setFrameStyle(QFrame::HLine | QFrame::Sunken);

    auto* presets = new QHBoxLayout;
    const auto addPreset = [this, presets](const QString& caption, const Schedule& preset) {
        auto* button = new QPushButton(caption);
        connect(button, &QPushButton::clicked, m_grid, [this, preset] { m_grid->setSchedule(preset); });
        presets->addWidget(button);
    };
    addPreset(tr("Record &always"), always());
    addPreset(tr("Clear a&ll"), Schedule());
    addPreset(tr("&Office hours"), officeHours());

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(9, 6, 9, 6); // narrow, so that all 24 hours fit
    layout->setSpacing(3);
    layout->addWidget(label);
    layout->addWidget(line);
    layout->addWidget(m_grid, 1);
    layout->addLayout(presets);
    layout->addWidget(buttons);
    resize(430, 570);
}

Schedule SchedulerDialog::schedule() const
{
    return m_grid->schedule();
}
