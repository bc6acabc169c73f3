#include "ui/stateview.h"

#include "settings/appsettings.h"
#include "settings/channel.h"
#include "station/archivecopy.h"
#include "station/diskspace.h"
#include "station/station.h"
#include "ui/statusbar.h"
#include "ui/statustexts.h"
#include "ui/trayicon.h"
#include "ui/vfdpanel.h"

StateView::StateView(const Station* station, QWidget* window, VfdPanel* panel, StatusBar* status, TrayIcon* tray)
    : QObject(window), m_station(station), m_window(window), m_panel(panel), m_status(status), m_tray(tray)
{
    connect(station, &Station::stateChanged, this, &StateView::show);
    connect(station->archiveCopy(), &ArchiveCopy::stateChanged, this, &StateView::showDisk);
}

void StateView::showDisk()
{
    const AppSettings& settings = AppSettings::instance();
    const ArchiveCopy* copy = m_station->archiveCopy();
    m_panel->setDiskText(StatusTexts::diskLeft(m_station->diskSpace()->freeBytes(), estimatedBytesPerSecond(settings)) +
                         StatusTexts::copy(copy->isEnabled(), copy->filesBehind()));
}

void StateView::show()
{
    const StationStatus state = m_station->state();
    const QString alarm = state.isAlarming() ? state.wordText() : QString();
    const QString name = Channel::named(tr("Tidewell"));
    m_panel->setState({state.wordText(), state.isAlarming()}, state.diskLow);
    m_status->showTrying(state.tryingAgain);
    m_tray->setAlarm(alarm);
    m_window->setWindowTitle(alarm.isEmpty() ? name : tr("%1 - %2").arg(alarm, name));
}
