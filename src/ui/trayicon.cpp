#include "ui/trayicon.h"

#include <QIcon>
#include <QMenu>

TrayIcon* TrayIcon::create(QObject* parent)
{
    return isAvailable() ? new TrayIcon(parent) : nullptr;
}

TrayIcon::TrayIcon(QObject* parent)
    : QObject(parent), m_menu(std::make_unique<QMenu>()), m_icon(QIcon(QStringLiteral(":/branding/icon.png")))
{
    m_menu->addAction(tr("&Show"), this, &TrayIcon::showRequested);
    m_menu->addAction(tr("Start/stop &recording"), this, &TrayIcon::toggleRequested);
    m_menu->addAction(tr("E&xit"), this, &TrayIcon::exitRequested);
    m_icon.setToolTip(tr("Tidewell"));
    m_icon.setContextMenu(m_menu.get());
    connect(&m_icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::DoubleClick)
            Q_EMIT showRequested();
    });
    m_icon.show();
}

TrayIcon::~TrayIcon() = default;

void TrayIcon::setRecording(bool recording)
{
    m_icon.setToolTip(recording ? tr("Tidewell - recording") : tr("Tidewell - idle"));
}

void TrayIcon::showInformation(const QString& text, int milliseconds)
{
    m_icon.showMessage(tr("Tidewell"), text, QSystemTrayIcon::Information, milliseconds);
}

void TrayIcon::showWarning(const QString& text, int milliseconds)
{
    m_icon.showMessage(tr("Tidewell"), text, QSystemTrayIcon::Warning, milliseconds);
}
