#include "ui/stateview.h"

#include "settings/channel.h"
#include "station/station.h"
#include "ui/statusbar.h"
#include "ui/trayicon.h"
#include "ui/vfdpanel.h"

StateView::StateView(const Station* station, QWidget* window, VfdPanel* panel, StatusBar* status, TrayIcon* tray)
    : QObject(window), m_station(station), m_window(window), m_panel(panel), m_status(status), m_tray(tray)
{
    connect(station, &Station::stateChanged, this, &StateView::show);
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
