#include "capture/pulseinputworker_linux.h"

#include "capture/qtaudiocapture.h"

#include <QAudio>
#include <QLoggingCategory>
#include <QMutex>
#include <QScopeGuard>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(lcInput, "tidewell.capture.input")

namespace {

/// How long a stop may go unnoticed; sound wakes the loop by itself.
constexpr auto PollInterval = 50ms;
/// How often to look whether the chosen device is back.
constexpr auto LookInterval = 1s;
/// How long to wait for the list that tells whether a device is gone. Its stream may end first.
constexpr auto ListTimeout = 1s;

/// Says why in detail, once: while a server is away it is asked every few seconds.
QString openFailed(const char* step, const QString& reason)
{
    static QMutex mutex; // each run has a thread of its own
    static QString said;
    const QString details = QStringLiteral("%1: %2").arg(QLatin1String(step), reason);
    const QMutexLocker lock(&mutex);
    if (std::exchange(said, details) != details)
        qCWarning(lcInput, "%ls", qUtf16Printable(details));
    return QtAudioCapture::openFailedText();
}

bool isListed(const PulseConnection& server, const PulseSource& wanted)
{
    const auto& sources = server.sources();
    return std::any_of(sources.begin(), sources.end(),
                       [&](const PulseSource& source) { return source.index == wanted.index; });
}

} // namespace

PulseInputWorker::PulseInputWorker(const QByteArray& deviceId, const ChannelPick& pick, const PcmFormat& format,
                                   double gain, bool limiter)
    : DeviceWorker(deviceId, format, gain, limiter), m_pick(pick)
{
}

std::optional<PulseInputWorker::Opening> PulseInputWorker::waitUntilOpen(std::chrono::milliseconds atMost)
{
    if (!m_settled.tryAcquire(1, int(atMost.count())))
        return std::nullopt;
    return m_opening;
}

void PulseInputWorker::settle(const QString& failure)
{
    if (std::exchange(m_isSettled, true))
        return;
    m_opening.failure = failure;
    m_settled.release();
}

void PulseInputWorker::run()
{
    QString refusal;
    const auto server = PulseConnection::ready([this] { return stopRequested(); }, refusal);
    const auto beforeTheirServer = qScopeGuard([this] {
        m_recorded = {};
        m_chosen = {};
    });
    const QString error = server              ? record(*server)
                          : refusal.isEmpty() ? QString()
                                              : openFailed("the sound server does not answer", refusal);
    if (error.isEmpty())
        return;
    settle(error);
    Q_EMIT failed(error);
}

QString PulseInputWorker::record(PulseConnection& server)
{
    const PulseSource* const source = server.inputFor(deviceId());
    if (!source)
        return QtAudioCapture::noDeviceText();
    m_opening.device = source->description;
    Q_EMIT endpointResolved(source->description);
    if (!m_pick.fits(source->format.channels))
        return QtAudioCapture::lacksChannelsText(m_pick, source->description, source->format.channels);
    m_recorded = open(server, *source);
    if (!m_recorded.stream)
        return openFailed("the sound server takes no stream", server.errorString());
    setMixFormat(m_recorded.stream->format(), m_pick);
    return read(server);
}

PulseInputWorker::Input PulseInputWorker::open(PulseConnection& server, const PulseSource& source) const
{
    pa_sample_spec wanted = source.format;
    pa_channel_map places = source.channels;
    if (m_pick.isEverything()) {
        wanted = {PA_SAMPLE_S16LE, uint32_t(format().sampleRate), uint8_t(format().channels)};
        pa_channel_map_init_extend(&places, wanted.channels, PA_CHANNEL_MAP_DEFAULT);
    }
    return {source, PulseStream::record(server.context(), "Input", source.name, wanted, places)};
}

QString PulseInputWorker::read(PulseConnection& server)
{
    while (!stopRequested()) {
        if (!server.iterate(PollInterval))
            return QtAudioCapture::inputErrorText(QAudio::FatalError);
        if (m_recorded.stream->hasEnded())
            return reasonOfEnd(server);
        if (m_recorded.stream->isReady())
            settle({});
        m_recorded.stream->drain([this](const uchar* samples, qint64 frames) {
            m_hasDelivered = true;
            if (const QByteArray block = convert(samples, frames); !block.isEmpty())
                Q_EMIT pcmReady(block);
        });
        if (!deviceId().isEmpty() && m_recorded.source.name != deviceId())
            lookForChosen(server);
    }
    return {};
}

QString PulseInputWorker::reasonOfEnd(PulseConnection& server)
{
    const QDeadlineTimer until(ListTimeout);
    const int seen = server.revision();
    server.refresh();
    // What was refused from the start is most likely still there, and one look at the list is enough.
    while (isListed(server, m_recorded.source) && (m_hasDelivered || server.revision() == seen) &&
           !until.hasExpired() && !stopRequested()) {
        if (!server.iterate(PollInterval))
            return QtAudioCapture::inputErrorText(QAudio::FatalError);
    }
    if (!isListed(server, m_recorded.source))
        return QtAudioCapture::removedText(m_recorded.source.description);
    return m_hasDelivered ? QtAudioCapture::inputErrorText(QAudio::IOError)
                          : openFailed("the sound server refuses to record the device", server.errorString());
}

/// Records the chosen device from when it delivers. Until then the default one is kept, as a device that was just
/// plugged in may be listed before it works.
void PulseInputWorker::lookForChosen(PulseConnection& server)
{
    if (!m_chosen.stream && m_nextLook.hasExpired()) {
        m_nextLook.setRemainingTime(LookInterval);
        const PulseSource* const source = server.source(deviceId());
        if (source && m_pick.fits(source->format.channels))
            m_chosen = open(server, *source);
    }
    if (!m_chosen.stream)
        return;
    if (m_chosen.stream->hasEnded()) {
        m_chosen = {};
    } else if (m_chosen.stream->hasPackets()) {
        m_recorded = std::exchange(m_chosen, {});
        setMixFormat(m_recorded.stream->format(), m_pick);
        Q_EMIT endpointResolved(m_recorded.source.description);
        Q_EMIT warning(QtAudioCapture::returnedText(m_recorded.source.description));
    }
}
