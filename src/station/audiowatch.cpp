#include "station/audiowatch.h"

#include "engine/recorder.h"
#include "settings/appsettings.h"

#include <algorithm>
#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto LookInterval = 1s;
constexpr qint64 PatienceMs = 3000;
constexpr qint64 RestartMs = 5000;

bool isStream()
{
    return CaptureBackend(AppSettings::instance().backend) == CaptureBackend::Stream;
}

qint64 patienceMs()
{
    return isStream() ? std::max(PatienceMs, 1000 * qint64(AppSettings::instance().streamStall)) : PatienceMs;
}

} // namespace

AudioWatch::AudioWatch(Recorder* recorder, QObject* parent) : QObject(parent)
{
    m_timer.setInterval(LookInterval);
    connect(&m_timer, &QTimer::timeout, this, &AudioWatch::look);
    connect(recorder, &Recorder::audioReceived, this, &AudioWatch::onAudio);
    connect(recorder, &Recorder::recordingChanged, this, &AudioWatch::onRecordingChanged);
}

double AudioWatch::secondsSinceAudio() const
{
    return m_heard && m_timer.isActive() ? double(m_lastAudio.elapsed()) / 1000.0 : -1.0;
}

void AudioWatch::onRecordingChanged(bool recording)
{
    m_heard = false;
    m_lost = false;
    if (!recording) {
        m_timer.stop();
        return;
    }
    m_lastAudio.start();
    m_timer.start();
}

void AudioWatch::onAudio()
{
    const qint64 ms = m_lastAudio.restart();
    if (!std::exchange(m_heard, true))
        Q_EMIT audioBegan();
    if (std::exchange(m_lost, false))
        Q_EMIT audioReturned(ms);
}

void AudioWatch::look()
{
    if (m_lastAudio.elapsed() < patienceMs())
        return;
    const bool isNew = !std::exchange(m_lost, true);
    if (isNew)
        Q_EMIT audioLost();
    if (!m_lost || isStream() || (!isNew && !m_lastRestart.hasExpired(RestartMs)))
        return;
    m_lastRestart.start();
    Q_EMIT restartWanted();
}
