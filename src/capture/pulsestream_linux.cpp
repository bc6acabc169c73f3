#include "capture/pulsestream_linux.h"

namespace {

constexpr pa_usec_t FragmentMicroseconds = 50'000;

/// \param format as asked for; becomes the stream's.
MixFormat formatFor(pa_sample_spec& format)
{
    int bits = 0;
    switch (format.format) {
    case PA_SAMPLE_U8:
        bits = 8;
        break;
    case PA_SAMPLE_S16LE:
        bits = 16;
        break;
    case PA_SAMPLE_S24LE:
        bits = 24;
        break;
    case PA_SAMPLE_S32LE:
        bits = 32;
        break;
    default:
        format.format = PA_SAMPLE_FLOAT32LE;
        bits = 32;
    }
    return {int(format.rate), format.channels, bits, format.format == PA_SAMPLE_FLOAT32LE, int(pa_frame_size(&format))};
}

} // namespace

void PulseStream::Release::operator()(pa_stream* stream) const
{
    pa_stream_disconnect(stream);
    pa_stream_unref(stream);
}

std::unique_ptr<PulseStream> PulseStream::record(pa_context* context, const char* name, const QByteArray& source,
                                                 const pa_sample_spec& format, const pa_channel_map& channels)
{
    pa_sample_spec spec = format;
    const MixFormat mix = formatFor(spec);
    pa_stream* const stream = pa_stream_new(context, name, &spec, &channels);
    if (!stream)
        return nullptr;
    pa_buffer_attr buffer;
    buffer.maxlength = buffer.tlength = buffer.prebuf = buffer.minreq = uint32_t(-1);
    buffer.fragsize = uint32_t(pa_usec_to_bytes(FragmentMicroseconds, &spec));
    // Moved to another device by the server, the stream would record what nobody chose, and in silence.
    constexpr auto Flags = pa_stream_flags_t(PA_STREAM_ADJUST_LATENCY | PA_STREAM_DONT_MOVE);
    pa_stream_connect_record(stream, source.constData(), &buffer, Flags);
    return std::unique_ptr<PulseStream>(new PulseStream(stream, mix));
}

bool PulseStream::hasPackets() const
{
    return isReady() && pa_stream_readable_size(m_stream.get()) > 0;
}

void PulseStream::drain(const std::function<void(const uchar* samples, qint64 frames)>& handle)
{
    const void* samples = nullptr;
    size_t bytes = 0;
    while (pa_stream_peek(m_stream.get(), &samples, &bytes) == 0 && bytes > 0) {
        handle(static_cast<const uchar*>(samples), qint64(bytes) / m_format.frameBytes);
        pa_stream_drop(m_stream.get());
    }
}
