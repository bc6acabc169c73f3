#include "ui/icons.h"

QIcon Icons::load(const QString& name)
{
    const QString path = QStringLiteral(":/icons/") + name;
    QIcon drawing(path + QStringLiteral(".svg"));
    if (!drawing.pixmap(16).isNull()) // without the plug-in the icon is there, but empty
        return drawing;

    QIcon pictures;
    for (const int size : {16, 32, 48})
        pictures.addFile(QStringLiteral("%1-%2.png").arg(path).arg(size), QSize(size, size));
    return pictures;
}
