#include "ui/controlbar.h"

#include "ui/controlstyles.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QSignalBlocker>

ControlBar::ControlBar(QWidget* parent)
    : QWidget(parent), m_record(new QPushButton(tr("■ &Stop"))), m_automatic(new QCheckBox(tr("A&uto")))
{
    m_record->setStyleSheet(ControlStyles::IdleRecordButton);
    const int stopWidth = m_record->sizeHint().width();
    m_record->setText(tr("● &Record"));
    // Its neighbours shall stay where they are when its text changes.
    m_record->setMinimumWidth(qMax(stopWidth, m_record->sizeHint().width()));
    m_record->setText(tr("&Record"));
    connect(m_record, &QPushButton::clicked, this, &ControlBar::recordClicked);

    m_automatic->setToolTip(tr("Record in the hours that are marked in the scheduler"));
    connect(m_automatic, &QCheckBox::toggled, this, &ControlBar::automaticToggled);

    auto* scheduler = new QPushButton(tr("Sc&heduler"));
    scheduler->setStyleSheet(ControlStyles::Button);
    scheduler->setShortcut({}); // Alt+H is the help menu's; the schedule has Ctrl+H
    connect(scheduler, &QPushButton::clicked, this, &ControlBar::schedulerClicked);

    auto* archive = new QPushButton(tr("&Archive"));
    archive->setStyleSheet(ControlStyles::Button);
    connect(archive, &QPushButton::clicked, this, &ControlBar::archiveClicked);

    auto* row = new QHBoxLayout(this);
    row->setContentsMargins({});
    for (QWidget* control : std::initializer_list<QWidget*>{m_record, m_automatic, scheduler, archive})
        row->addWidget(control);
    row->addStretch();
}

void ControlBar::addBesideRecord(QWidget* control)
{
    static_cast<QBoxLayout*>(layout())->insertWidget(1, control);
    setTabOrder(m_record, control);
}

void ControlBar::setRecording(bool recording)
{
    m_record->setText(recording ? tr("■ &Stop") : tr("● &Record"));
    m_record->setStyleSheet(recording ? ControlStyles::RecordingButton : ControlStyles::IdleRecordButton);
}

void ControlBar::setAutomatic(bool on)
{
    const QSignalBlocker quiet(m_automatic);
    m_automatic->setChecked(on);
}
