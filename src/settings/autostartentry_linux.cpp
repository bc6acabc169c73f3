#include "settings/autostartentry_linux.h"

QByteArray AutostartEntry::text(const QString& executable, const QString& name, const QString& channel)
{
    // The Exec key is escaped twice: once as a quoted argument, once as a string value of the file. "%" starts a code.
    QString quoted;
    for (const QChar c : executable) {
        if (c == u'"' || c == u'`' || c == u'$')
            quoted += QStringLiteral("\\\\");
        else if (c == u'\\')
            quoted += QStringLiteral("\\\\\\");
        else if (c == u'%')
            quoted += u'%';
        quoted += c;
    }
    return QStringLiteral("[Desktop Entry]\n"
                          "Type=Application\n"
                          "Name=%2\n"
                          "Comment=Continuous broadcast logging and archiving\n"
                          "Icon=tidewell\n"
                          "Exec=\"%1\"%3\n"
                          "Terminal=false\n")
        .arg(quoted, name, channel.isEmpty() ? QString() : QStringLiteral(" --profile ") + channel)
        .toUtf8();
}
