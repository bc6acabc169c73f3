#include "capture/streamcapture.h"

#include "capture/pcmconvert.h"
#include "process/childprocess.h"
#include "process/ffmpeg.h"
#include "settings/appsettings.h"
#include "settings/redacted.h"

#include <QCoreApplication>
#include <QUrl>

#include <algorithm>
#include <array>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto WatchdogInterval = 1000ms;
constexpr int MinStallSeconds = 3;
constexpr ChildProcess::Patience StopPatience{0s, 2s, 1s};
constexpr std::array ReconnectDelays{1s, 2s, 5s, 10s, 20s, 30s};
/// An outage of a night must not become one block of gigabytes.
constexpr qint64 SilenceBlockMs = 1000;

QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

} // namespace

StreamCapture::StreamCapture(QObject* parent) : AudioCapture(parent)
{
    m_watchdog.setInterval(WatchdogInterval);
    connect(&m_watchdog, &QTimer::timeout, this, &StreamCapture::onWatchdog);
    m_reconnectTimer.setSingleShot(true);
    connect(&m_reconnectTimer, &QTimer::timeout, this, &StreamCapture::attemptReconnect);
}

StreamCapture::~StreamCapture()
{
    StreamCapture::stop();
}

bool StreamCapture::isRunning() const
{
    return m_process && m_process->isRunning();
}

QString StreamCapture::description() const
{
    const QString address = AppSettings::instance().streamUrl.trimmed();
    if (address.isEmpty())
        return tr("(no stream URL)");
    const QUrl url(address);
    return url.host().isEmpty() ? address : url.host(QUrl::FullyDecoded) + url.path(QUrl::FullyDecoded);
}

std::chrono::seconds StreamCapture::reconnectDelay(int attempt)
{
    return ReconnectDelays.at(size_t(std::clamp(attempt, 0, int(ReconnectDelays.size()) - 1)));
}

QStringList StreamCapture::arguments(const QString& url, const PcmFormat& format, bool reconnect)
{
    QStringList list{text("-hide_banner"), text("-loglevel"), text("error"), text("-user_agent")};
    list << text("%1/%2").arg(text("Tidewell"), QCoreApplication::applicationVersion());
    if (reconnect) {
        list << text("-reconnect") << text("1") << text("-reconnect_streamed") << text("1");
        list << text("-reconnect_delay_max") << text("10");
    }
    list << text("-i") << url << text("-vn") << text("-flush_packets") << text("1");
    list << text("-f") << text("s16le") << text("-ar") << QString::number(format.sampleRate);
    list << text("-ac") << QString::number(format.channels) << text("pipe:1");
    return list;
}

bool StreamCapture::start(const PcmFormat& format)
{
    stop();
    m_missingMs = 0;
    m_attempt = 0;
    m_stopping = false;
    m_connected = false;
    m_worthRetrying = true;
    m_format = format;
    m_url = AppSettings::instance().streamUrl.trimmed();

    QString failure;
    if (m_url.isEmpty())
        failure = tr("No stream URL has been configured.");
    else if (!QUrl(m_url).isValid())
        failure = tr("The stream URL is not valid: %1").arg(Redacted::url(m_url));
    else if (!ffmpegAvailable())
        failure = tr("Stream logging needs ffmpeg, which was not found on this system. Install it or place ffmpeg next "
                     "to Tidewell.");
    if (!failure.isEmpty()) {
        m_worthRetrying = false;
        Q_EMIT errorOccurred(failure);
        return false;
    }
    if (!launch(&failure)) {
        Q_EMIT errorOccurred(failure);
        return false;
    }
    m_lastData.start();
    m_watchdog.start();
    Q_EMIT runningChanged(true);
    return true;
}

bool StreamCapture::launch(QString* failure)
{
    m_process = new ChildProcess(this);
    m_process->endWithThisProgram(); // without a listener it would stay connected to the stream for ever
    connect(m_process, &QProcess::readyReadStandardOutput, this, &StreamCapture::onReadyRead);
    connect(m_process, &QProcess::finished, this, &StreamCapture::onProcessFinished);
    if (m_process->launch(ffmpegPath(), arguments(m_url, m_format, AppSettings::instance().streamReconnect)))
        return true;
    *failure = tr("Could not start ffmpeg: %1").arg(m_process->errorString());
    discardProcess();
    return false;
}

void StreamCapture::discardProcess()
{
    ChildProcess* const process = m_process;
    m_process = nullptr;
    m_connected = false;
    process->disconnect(this);
    process->reap();
}

void StreamCapture::stop()
{
    m_stopping = true;
    m_watchdog.stop();
    m_reconnectTimer.stop();
    if (!m_process)
        return;
    m_process->disconnect(this);
    m_process->end(StopPatience);
    discardProcess();
    Q_EMIT runningChanged(false);
}

void StreamCapture::onReadyRead()
{
    if (!m_process || m_stopping)
        return;
    // A read may end in the middle of a frame. The rest of it stays where it is until it is whole: half a sample would
    // be noise to all who come after, and half a frame would swap the channels.
    const qint64 available = m_process->bytesAvailable();
    QByteArray block = m_process->read(available - available % m_format.frameBytes());
    if (block.isEmpty())
        return;
    if (!m_connected) {
        m_connected = true;
        m_attempt = 0;
        Q_EMIT warning(tr("Stream connected: %1").arg(description()));
    }
    if (m_missingMs > 0)
        fillWithSilence();
    if (m_stopping) // a slot may have called stop()
        return;

    const AppSettings& settings = AppSettings::instance();
    quint64 overs = 0;
    applyGainS16(block, {GainStage::factorFromDb(settings.inputGainDb), settings.softLimit, &overs});
    if (overs > 0)
        Q_EMIT overloadDetected();
    m_lastData.start();
    if (!m_stopping)
        Q_EMIT dataReady(block);
}

void StreamCapture::fillWithSilence()
{
    const qint64 ms = std::exchange(m_missingMs, 0);
    Q_EMIT timeMadeUp(ms);
    qint64 frames = m_format.sampleRate * ms / 1000;
    // The same block each time: however much of it waits for the encoder, it is in memory once.
    const qint64 atMost = m_format.sampleRate * SilenceBlockMs / 1000;
    const QByteArray block(atMost * m_format.frameBytes(), '\0');
    for (; frames > 0 && !m_stopping; frames -= atMost)
        Q_EMIT dataReady(frames >= atMost ? block : block.first(frames * m_format.frameBytes()));
}

void StreamCapture::addLostTime()
{
    m_missingMs += m_lastData.restart();
}

void StreamCapture::onWatchdog()
{
    // Between two attempts there is nothing that could stall, and the wait is counted when it ends.
    if (m_stopping || !m_process || !m_lastData.isValid())
        return;
    const qint64 threshold = 1000 * qint64(std::max(AppSettings::instance().streamStall, MinStallSeconds));
    if (m_lastData.elapsed() < threshold)
        return;
    // The event loop reads the pipe, and had no turn while the main thread was busy: what waits there was in time.
    if (m_process->waitForReadyRead(0) || m_stopping || !m_process)
        return;
    const qint64 stalled = m_lastData.elapsed();
    addLostTime();
    replaceProcess(tr("Stream stalled for %1 s - reconnecting").arg(stalled / 1000));
}

void StreamCapture::onProcessFinished()
{
    if (!m_stopping)
        replaceProcess(tr("Stream decoder exited - reconnecting"));
}

void StreamCapture::replaceProcess(const QString& reason)
{
    Q_EMIT warning(reason);
    if (m_process) // unless a slot has called stop()
        discardProcess();
    scheduleReconnect();
}

void StreamCapture::scheduleReconnect()
{
    if (m_stopping)
        return;
    if (!AppSettings::instance().streamReconnect) {
        m_worthRetrying = false;
        Q_EMIT errorOccurred(tr("The stream ended and reconnection is disabled."));
        return;
    }
    m_reconnectTimer.start(reconnectDelay(m_attempt));
    ++m_attempt;
}

void StreamCapture::attemptReconnect()
{
    if (m_stopping)
        return;
    if (m_lastData.isValid())
        addLostTime();
    QString failure;
    if (launch(&failure))
        return;
    Q_EMIT warning(failure); // an error would end the recording, and the next attempt may well succeed
    scheduleReconnect();
}
