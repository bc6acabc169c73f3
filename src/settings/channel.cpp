#include "settings/channel.h"

#include "settings/settingsstore.h"

#include <QCoreApplication>
#include <QStandardPaths>

#include <algorithm>

namespace {

QString& current()
{
    static QString name;
    return name;
}

QString suffix()
{
    return current().isEmpty() ? QString() : u'-' + current();
}

} // namespace

bool Channel::isValidName(const QString& name)
{
    const auto valid = [](QChar c) {
        return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') || c == u'-' ||
               c == u'_';
    };
    return !name.isEmpty() && name.size() <= MaxNameLength && std::all_of(name.begin(), name.end(), valid);
}

void Channel::setName(const QString& name)
{
    current() = name;
}

QString Channel::name()
{
    return current();
}

QString Channel::displayName()
{
    return current().isEmpty() ? QStringLiteral("Tidewell") : QStringLiteral("Tidewell - ") + current();
}

QString Channel::named(QString text)
{
    return text.replace(QLatin1String("Tidewell"), displayName());
}

QString Channel::storeName()
{
    return QCoreApplication::applicationName() + suffix();
}

QString Channel::fileName()
{
    return QStringLiteral("tidewell") + suffix();
}

QString Channel::dataFolder()
{
    // This path ends in the name of the application.
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation) + suffix();
}

QStringList Channel::all()
{
    QStringList names = SettingsStore::channels();
    if (!names.contains(current()))
        names.append(current());
    names.sort();
    return names;
}
