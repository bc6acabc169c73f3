#include "settings/autostart.h"

#include "settings/channel.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSettings>

void Autostart::setEnabled(bool enable)
{
    QSettings run(QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"),
                  QSettings::NativeFormat);
    const QString entry = Channel::storeName(); // "Tidewell" for the first channel
    if (!enable) {
        run.remove(entry);
        return;
    }
    // Also when this is the console's twin of the program: that would open a console at log-on.
    const QFileInfo own(QCoreApplication::applicationFilePath());
    const QString window = own.dir().filePath(own.completeBaseName() + QStringLiteral(".exe"));
    QString command = u'"' + QDir::toNativeSeparators(window) + u'"';
    if (!Channel::name().isEmpty())
        command += QStringLiteral(" --profile ") + Channel::name(); // such a name needs no quotes
    run.setValue(entry, command);
}
