#include "ui/alarmstab.h"

#include "settings/appsettings.h"
#include "settings/limits.h"
#include "station/alarmboard.h"
#include "ui/settingsbinding.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

AlarmsTab::AlarmsTab(AppSettings& settings, SettingsBinding& binding, QWidget* parent) : QWidget(parent)
{
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(createList(settings, binding));
    layout->addWidget(createWays(settings, binding));
    layout->addStretch();
}

QGroupBox* AlarmsTab::createList(AppSettings& settings, SettingsBinding& binding)
{
    auto* group = new QGroupBox(tr("Alarms"));
    auto* grid = new QGridLayout(group);
    grid->setColumnStretch(0, 1);
    grid->addWidget(new QLabel(tr("Tell me of")), 0, 0);
    grid->addWidget(new QLabel(tr("if it lasts")), 0, 1);
    for (const AlarmRow& row : AlarmRows) {
        if (row.kind == AlarmKind::ClockWrong)
            continue; // nothing tells of it yet
        AlarmSetting& alarm = settings.alarms[size_t(row.kind)];
        auto* wanted = new QCheckBox(AlarmBoard::displayName(row.kind));
        binding.bind(wanted, alarm.enabled);
        const int line = grid->rowCount();
        grid->addWidget(wanted, line, 0);
        if (row.kind == AlarmKind::Restarted)
            continue; // it has happened, and does not last
        auto* delay = new QSpinBox;
        delay->setRange(Limits::AlarmDelaySeconds.lowest, Limits::AlarmDelaySeconds.highest);
        delay->setSuffix(tr(" sec"));
        delay->setAccessibleName(tr("%1: if it lasts").arg(AlarmBoard::displayName(row.kind)));
        binding.bind(delay, alarm.delaySeconds);
        delay->setEnabled(wanted->isChecked());
        connect(wanted, &QCheckBox::toggled, delay, &QWidget::setEnabled);
        grid->addWidget(delay, line, 1);
    }
    auto* diskHours = new QSpinBox;
    diskHours->setRange(Limits::DiskLowHours.lowest, Limits::DiskLowHours.highest);
    diskHours->setSuffix(tr(" h"));
    binding.bind(diskHours, settings.diskLowHours);
    const int line = grid->rowCount();
    auto* label = new QLabel(tr("The disk is almost full when it lasts for less than"));
    label->setBuddy(diskHours);
    grid->addWidget(label, line, 0);
    grid->addWidget(diskHours, line, 1);
    return group;
}

QGroupBox* AlarmsTab::createWays(AppSettings& settings, SettingsBinding& binding)
{
    auto* mail = new QCheckBox(tr("By mail, with the server and the address of the tab Alerts"));
    binding.bind(mail, settings.alarmMail);
    auto* url = new QLineEdit;
    url->setPlaceholderText(QStringLiteral("https://"));
    url->setToolTip(tr("Each alarm is sent there as JSON by HTTP POST, with the status of this station"));
    binding.bind(url, settings.alarmUrl);
    auto* heartbeat = new QLineEdit;
    heartbeat->setPlaceholderText(QStringLiteral("https://"));
    heartbeat->setToolTip(
        tr("This address is called once a minute while audio is written: who watches it notices a dead computer too"));
    binding.bind(heartbeat, settings.heartbeatUrl);

    auto* group = new QGroupBox(tr("How"));
    auto* form = new QFormLayout(group);
    form->addRow(mail);
    form->addRow(tr("To the web address:"), url);
    form->addRow(tr("Heartbeat address:"), heartbeat);
    return group;
}
