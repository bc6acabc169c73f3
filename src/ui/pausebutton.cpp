#include "ui/pausebutton.h"

#include "station/recordingpause.h"
#include "station/station.h"
#include "ui/controlstyles.h"

#include <QMenu>

#include <chrono>

using namespace std::chrono_literals;

PauseButton::PauseButton(Station* station, QWidget* parent) : QPushButton(tr("&Pause"), parent)
{
    auto* menu = new QMenu(this);
    const auto offer = [&](const QString& text, std::chrono::minutes length) {
        menu->addAction(text, station, [station, length] { station->pauseRecording(length); });
    };
    offer(tr("Pause &15 min"), 15min);
    offer(tr("Pause 1 &h"), 60min);
    offer(tr("Pause &until I start it"), 0min);
    menu->addSeparator();
    m_goOn = menu->addAction(tr("&Go on now"), station, &Station::endPause);
    setMenu(menu);
    setStyleSheet(ControlStyles::Button);
    setToolTip(tr("Record nothing for a while"));
    connect(station->pause(), &RecordingPause::changed, this, &PauseButton::showPause);
    showPause(station->pause()->isActive());
}

void PauseButton::showPause(bool paused)
{
    m_goOn->setEnabled(paused);
}
