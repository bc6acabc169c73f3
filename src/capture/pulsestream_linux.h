#pragma once

#include "capture/mixformat.h"

#include <QByteArray>

#include <pulse/pulseaudio.h>

#include <functional>
#include <memory>

/// Records one source of the sound server. Used by the thread of its connection, and destroyed before it.
class PulseStream {
public:
    /// \param name what the server's mixer shows.
    /// \param source name of the source.
    /// \param format, channels what the packets should be. With the source's own, as the server tells them, the server
    /// neither resamples nor moves a channel to another place; anything else it converts to.
    /// \return null when the server takes no such stream. Whether there is such a source is seen later.
    static std::unique_ptr<PulseStream> record(pa_context* context, const char* name, const QByteArray& source,
                                               const pa_sample_spec& format, const pa_channel_map& channels);

    /// Format of the packets: what was asked for where our conversion can read that, else floats.
    const MixFormat& format() const { return m_format; }
    /// Whether the server refused the stream, or its source or the server has gone.
    bool hasEnded() const { return !PA_STREAM_IS_GOOD(pa_stream_get_state(m_stream.get())); }
    /// Whether the server has accepted the stream, and still keeps it.
    bool isReady() const { return pa_stream_get_state(m_stream.get()) == PA_STREAM_READY; }
    /// Whether sound should be coming.
    bool isPlaying() const { return isReady() && pa_stream_is_suspended(m_stream.get()) == 0; }
    /// Whether drain() would hand over anything.
    bool hasPackets() const;
    /// Hands over all packets that have come. A packet with null samples: the server has dropped that many frames.
    void drain(const std::function<void(const uchar* samples, qint64 frames)>& handle);

private:
    struct Release {
        void operator()(pa_stream* stream) const;
    };
    PulseStream(pa_stream* stream, const MixFormat& format) : m_stream(stream), m_format(format) {}

    std::unique_ptr<pa_stream, Release> m_stream;
    MixFormat m_format;
};
