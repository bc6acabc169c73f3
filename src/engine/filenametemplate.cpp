#include "engine/filenametemplate.h"

#include <QRegularExpression>

QString FileNameTemplate::expand(const QString& fileTemplate, const QDateTime& start, int serial)
{
    const auto digits = [](int value, int width) {
        return QStringLiteral("%1").arg(value, width, 10, QLatin1Char('0'));
    };
    const QDate date = start.date();
    const QTime time = start.time();

    QString name = fileTemplate.trimmed().isEmpty() ? QString::fromLatin1(Default) : fileTemplate;
    // Longer tokens first, so that %m never eats half of %mm.
    name.replace(QLatin1String("%hh"), digits(time.hour(), 2));
    name.replace(QLatin1String("%mm"), digits(time.minute(), 2));
    name.replace(QLatin1String("%ss"), digits(time.second(), 2));
    name.replace(QLatin1String("%sn"), digits(serial, 4));
    name.replace(QLatin1String("%y"), digits(date.year(), 4));
    name.replace(QLatin1String("%m"), digits(date.month(), 2));
    name.replace(QLatin1String("%d"), digits(date.day(), 2));

    static const QRegularExpression forbidden(QStringLiteral(R"([\\/:*?"<>|])"));
    return name.remove(forbidden);
}
