#include "settings/redacted.h"

// By its letters, since what the operator typed need not be an address that a parser accepts.
QString Redacted::url(const QString& address)
{
    QString text = address;
    for (const QChar c : {u'?', u'#'}) {
        // Not what comes before the last "@": a password may hold these.
        const auto place = text.indexOf(c, text.lastIndexOf(u'@') + 1);
        if (place >= 0)
            text.truncate(place);
    }
    const auto at = text.lastIndexOf(u'@');
    if (at < 0)
        return text;
    const auto scheme = text.indexOf(QLatin1String("://"));
    return (scheme >= 0 && scheme < at ? text.left(scheme + 3) : QString()) + text.mid(at + 1);
}

QString Redacted::host(const QString& address)
{
    const QString text = url(address);
    const auto scheme = text.indexOf(QLatin1String("://"));
    return text.left(text.indexOf(u'/', scheme < 0 ? 0 : scheme + 3));
}
