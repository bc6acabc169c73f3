#include "ui/trayicon.h"

#include "settings/channel.h"

#include <QIcon>
#include <QMenu>
#include <QPainter>

#include <utility>

namespace {

constexpr int BalloonMs = 4000;
constexpr int SilenceBalloonMs = 10'000;
constexpr int IconSize = 64;

/// The icon with a red disc over its lower half.
QIcon marked(const QIcon& icon)
{
    QPixmap pixmap = icon.pixmap(IconSize, IconSize);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::white, 3));
    painter.setBrush(QColor(0xd0, 0x14, 0x14));
    const double size = pixmap.width() / 1.8;
    painter.drawEllipse(QRectF(pixmap.width() - size - 2, pixmap.height() - size - 2, size, size));
    painter.end();
    return pixmap;
}

} // namespace

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
    m_icon->setContextMenu(m_menu.get());
    connect(m_icon.get(), &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
        if (reason == QSystemTrayIcon::DoubleClick)
            Q_EMIT showRequested();
    });
    showState();
    m_icon->show();
}

void TrayIcon::setRecording(bool recording)
{
    m_recording = recording;
    showState();
}

void TrayIcon::setAlarm(const QString& text)
{
    if (std::exchange(m_alarm, text) != text)
        showState();
}

void TrayIcon::showState()
{
    if (!m_icon)
        return;
    const QIcon usual(QStringLiteral(":/branding/icon.png"));
    m_icon->setIcon(m_alarm.isEmpty() ? usual : marked(usual));
    if (!m_alarm.isEmpty())
        m_icon->setToolTip(Channel::named(tr("Tidewell - %1").arg(m_alarm)));
    else if (m_recording)
        m_icon->setToolTip(Channel::named(*m_recording ? tr("Tidewell - recording") : tr("Tidewell - idle")));
    else
        m_icon->setToolTip(Channel::named(tr("Tidewell")));
}

void TrayIcon::warnOfSilence()
{
    if (m_icon)
        m_icon->showMessage(tr("Tidewell"), tr("Silence detected on the recorded source."), QSystemTrayIcon::Warning,
                            SilenceBalloonMs);
}

void TrayIcon::tellWhereItIs(bool recording)
{
    if (m_icon)
        m_icon->showMessage(tr("Tidewell"),
                            recording ? tr("Still recording. Double-click to reopen.")
                                      : tr("Still running. Double-click to reopen."),
                            QSystemTrayIcon::Information, BalloonMs);
}

void TrayIcon::hide()
{
    if (m_icon)
        m_icon->hide();
}
