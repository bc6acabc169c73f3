#include "app/appsettings.h"

#include <QCoreApplication>
#include <QDir>
#include <QSettings>

QString AppSettings::storedKey(const QString& key)
{
    return key;
}

void AppSettings::setStartWithSystem(bool enable)
{
    QSettings run(QStringLiteral("HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Run"),
                  QSettings::NativeFormat);
    const QString name = QStringLiteral("Tidewell");
    if (enable)
        run.setValue(name, u'"' + QDir::toNativeSeparators(QCoreApplication::applicationFilePath()) + u'"');
    else
        run.remove(name);
}
