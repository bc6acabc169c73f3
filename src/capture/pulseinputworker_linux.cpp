#include "capture/pulseinputworker_linux.h"

#include "capture/pulseconnection_linux.h"
#include "capture/pulsestream_linux.h"
#include "capture/qtaudiocapture.h"

#include <QAudio>
#include <QLoggingCategory>
#include <QScopeGuard>

using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(lcInput, "tidewell.capture.input")

namespace {

/// How long a stop may go unnoticed; sound wakes the loop by itself.
constexpr auto PollInterval = 50ms;

QString openFailed(const char* step, const QString& reason)
{
    qCWarning(lcInput, "%s: %ls", step, qUtf16Printable(reason));
    return QtAudioCapture::openFailedText();
}

} // namespace

PulseInputWorker::PulseInputWorker(const QByteArray& deviceId, const ChannelPick& pick, const PcmFormat& format,
                                   double gain, bool limiter)
    : DeviceWorker(deviceId, format, gain, limiter), m_pick(pick)
{
}

void PulseInputWorker::run()
{
    QString refusal;
    const auto server = PulseConnection::ready([this] { return stopRequested(); }, refusal);
    const auto beforeItsServer = qScopeGuard([this] { m_stream.reset(); });
    const QString error = server              ? record(*server)
                          : refusal.isEmpty() ? QString()
                                              : openFailed("the sound server does not answer", refusal);
    if (!error.isEmpty())
        Q_EMIT failed(error);
}

QString PulseInputWorker::record(PulseConnection& server)
{
    if (QString error = open(server); !error.isEmpty())
        return error;
    bool hasPlayed = false;
    while (!stopRequested()) {
        if (!server.iterate(PollInterval))
            return QtAudioCapture::inputErrorText(QAudio::FatalError);
        if (m_stream->hasEnded())
            return hasPlayed ? QtAudioCapture::inputErrorText(QAudio::IOError)
                             : openFailed("the sound server refuses to record the device", server.errorString());
        m_stream->drain([this, &hasPlayed](const uchar* samples, qint64 frames) {
            hasPlayed = true;
            if (const QByteArray block = convert(samples, frames); !block.isEmpty())
                Q_EMIT pcmReady(block);
        });
    }
    return {};
}

/// \return what is wrong, or nothing.
QString PulseInputWorker::open(PulseConnection& server)
{
    const PulseSource* const source = server.source(deviceId());
    if (!source)
        return openFailed("the sound server has no such device", QString::fromUtf8(deviceId()));
    if (!m_pick.fits(source->format.channels))
        return QtAudioCapture::lacksChannelsText(m_pick, source->description, source->format.channels);
    m_stream = PulseStream::record(server.context(), "Input", source->name, source->format, source->channels);
    if (!m_stream)
        return openFailed("the sound server takes no stream", server.errorString());
    setMixFormat(m_stream->format(), m_pick);
    return {};
}
