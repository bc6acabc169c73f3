#include "ui/updateprompt.h"

#include "app/appsettings.h"
#include "net/updatechecker.h"
#include "ui/plainmessage.h"
#include "ui/updatedialog.h"

#include <QCoreApplication>

UpdatePrompt::UpdatePrompt(QWidget* window) : QObject(window), m_window(window) {}

// In each of the three the settings are saved first: the checker has noted in them when it asked.

void UpdatePrompt::onUpdateAvailable(const UpdateInfo& info, bool silent)
{
    AppSettings& settings = AppSettings::instance();
    settings.save();
    Q_EMIT logMessage(tr("Update available: version %1").arg(info.latestVersion));
    if (silent && !info.critical && info.latestVersion == settings.skippedVersion)
        return;
    auto* dialog = new UpdateDialog(info, m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &UpdateDialog::skipRequested, this, [this, version = info.latestVersion] {
        AppSettings::instance().skippedVersion = version;
        AppSettings::instance().save();
        Q_EMIT logMessage(tr("Skipping version %1").arg(version));
    });
    dialog->open();
}

void UpdatePrompt::onUpToDate(bool silent)
{
    AppSettings::instance().save();
    if (!silent)
        PlainMessage::show(m_window, QMessageBox::Information, tr("Check for Updates"),
                           tr("You are running the latest version (%1).").arg(QCoreApplication::applicationVersion()));
}

void UpdatePrompt::onUpdateCheckFailed(const QString& reason, bool silent)
{
    AppSettings::instance().save();
    Q_EMIT logMessage(tr("Update check failed: %1").arg(reason));
    if (!silent)
        PlainMessage::show(m_window, QMessageBox::Warning, tr("Check for Updates"),
                           tr("Could not check for updates.\n\n%1").arg(reason));
}
