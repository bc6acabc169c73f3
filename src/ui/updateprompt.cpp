#include "ui/updateprompt.h"

#include "net/updatechecker.h"
#include "settings/appsettings.h"
#include "ui/plainmessage.h"
#include "ui/updatedialog.h"

#include <QCoreApplication>

UpdatePrompt::UpdatePrompt(const UpdateChecker* checker, QWidget* window) : QObject(window), m_window(window)
{
    connect(checker, &UpdateChecker::updateAvailable, this, &UpdatePrompt::onUpdateAvailable);
    connect(checker, &UpdateChecker::upToDate, this, &UpdatePrompt::onUpToDate);
    connect(checker, &UpdateChecker::checkFailed, this, &UpdatePrompt::onUpdateCheckFailed);
}

void UpdatePrompt::onUpdateAvailable(const UpdateInfo& info, bool silent)
{
    if (silent && !info.critical && info.latestVersion == AppSettings::instance().skippedVersion)
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
    if (!silent)
        PlainMessage::show(m_window, QMessageBox::Information, tr("Check for Updates"),
                           tr("You are running the latest version (%1).").arg(QCoreApplication::applicationVersion()));
}

void UpdatePrompt::onUpdateCheckFailed(const QString& reason, bool silent)
{
    if (!silent)
        PlainMessage::show(m_window, QMessageBox::Warning, tr("Check for Updates"),
                           tr("Could not check for updates.\n\n%1").arg(reason));
}
