#include "ui/versionlabel.h"

#include <QCoreApplication>
#include <QEvent>

VersionLabel::VersionLabel(QWidget* parent) : QLabel(parent)
{
    setToolTip(tr("Version %1 - click to check for updates").arg(QCoreApplication::applicationVersion()));
    showLink();
}

void VersionLabel::showLink()
{
    setText(tr("<a href=\"update\" style=\"text-decoration:none; color:palette(link)\">v%1</a>")
                .arg(QCoreApplication::applicationVersion()));
}

void VersionLabel::changeEvent(QEvent* event)
{
    QLabel::changeEvent(event);
    // Rich text takes its colours from the palette once, when it is set; and the same text would not be set again.
    if (event->type() == QEvent::PaletteChange) {
        clear();
        showLink();
    }
}
