#include "ui/settingsdialog.h"

#include "settings/appsettings.h"
#include "ui/alarmstab.h"
#include "ui/alertstab.h"
#include "ui/generaltab.h"
#include "ui/outputtab.h"
#include "ui/plainmessage.h"
#include "ui/recordingtab.h"
#include "ui/theme.h"
#include "ui/triggerstab.h"

#include <QDialogButtonBox>
#include <QTabWidget>
#include <QVBoxLayout>

SettingsDialog::SettingsDialog(AppSettings& settings, QWidget* parent) : QDialog(parent), m_settings(settings)
{
    setWindowTitle(tr("Settings"));

    auto* tabs = m_tabs = new QTabWidget;
    auto* recording = new RecordingTab(settings, m_binding);
    auto* output = m_output = new OutputTab(settings, m_binding);
    output->setCodec(recording->codec());
    connect(recording, &RecordingTab::codecChanged, output, &OutputTab::setCodec);
    output->setFormat(recording->format());
    connect(recording, &RecordingTab::formatChanged, output,
            [recording, output] { output->setFormat(recording->format()); });
    tabs->addTab(recording, tr("&Recording"));
    tabs->addTab(output, tr("&Output"));
    tabs->addTab(new TriggersTab(settings, m_binding), tr("&Triggers"));
    tabs->addTab(new AlertsTab(settings, m_binding), tr("&Alerts"));
    tabs->addTab(new GeneralTab(settings, m_binding), tr("&General"));
    tabs->addTab(new AlarmsTab(settings, m_binding), tr("A&larms"));

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    connect(buttons, &QDialogButtonBox::accepted, this, &SettingsDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &SettingsDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addWidget(buttons);
}

void SettingsDialog::accept()
{
    if (const QString problem = m_output->problem(); !problem.isEmpty()) {
        m_tabs->setCurrentWidget(m_output);
        PlainMessage::show(this, QMessageBox::Warning, windowTitle(), problem);
        return;
    }
    m_binding.write();
    m_settings.save();
    AppSettings::setStartWithSystem(m_settings.startWithSystem);
    Theme::apply(m_settings.theme);
    QDialog::accept();
}
