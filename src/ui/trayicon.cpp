#include "ui/trayicon.h"

#include "settings/channel.h"

#include <QIcon>
#include <QMenu>

TrayIcon::TrayIcon(QObject* parent) : QObject(parent)
{
    look();
}

TrayIcon::~TrayIcon() = default;

bool TrayIcon::look()
{
    const bool available = QSystemTrayIcon::isSystemTrayAvailable();
    if (available && !m_icon)
        create();
    return available || !m_icon;
}

void TrayIcon::create()
{
    m_menu = std::make_unique<QMenu>();
    m_menu->addAction(tr("&Show"), this, &TrayIcon::showRequested);
    m_menu->addAction(tr("Start/stop &recording"), this, &TrayIcon::toggleRequested);
    m_menu->addAction(tr("E&xit"), this, &TrayIcon::exitRequested);
    m_icon = std::make_unique<QSystemTrayIcon>(QIcon(QStringLiteral(":/branding/icon.png")));
    m_icon->setToolTip(Channel::named(tr("Tidewell")));
    m_icon->setContextMenu(m_menu.get());
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::DoubleClick)
            Q_EMIT showRequested();
    });
    if (m_recording)
        setRecording(*m_recording);
    m_icon->show();
}

void TrayIcon::setRecording(bool recording)
{
    m_recording = recording;
    if (m_icon)
        m_icon->setToolTip(Channel::named(recording ? tr("Tidewell - recording") : tr("Tidewell - idle")));
}

void TrayIcon::showInformation(const QString& text, int milliseconds)
{
    if (m_icon)
        m_icon->showMessage(tr("Tidewell"), text, QSystemTrayIcon::Information, milliseconds);
}

void TrayIcon::showWarning(const QString& text, int milliseconds)
{
    if (m_icon)
        m_icon->showMessage(tr("Tidewell"), text, QSystemTrayIcon::Warning, milliseconds);
}

void TrayIcon::hide()
{
    if (m_icon)
        m_icon->hide();
}
