#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <pulse/pulseaudio.h>

#include <chrono>
#include <memory>

/// A playback device of the sound server.
struct PulseSink {
    QByteArray name;
    QString description; ///< for people
    QByteArray monitorName; ///< the source that gives what the device plays
    quint32 monitorIndex = 0; ///< never given twice by a server, unlike the name
    pa_sample_spec format = {};
    pa_channel_map channels = {};
};

/// A connection to the sound server that keeps an up-to-date list of its playback devices. Nothing in it waits for the
/// server, except turn(). Used by one thread, any.
class PulseConnection {
public:
    PulseConnection();
    ~PulseConnection();
    Q_DISABLE_COPY_MOVE(PulseConnection)

    /// Handles what has come from the server, or the first that comes in so long a time.
    /// \return false once the connection has failed.
    bool turn(std::chrono::milliseconds atMost);
    /// Why it failed, or that it takes too long.
    QString errorString() const;
    pa_context* context() const { return m_context.get(); }

    /// Reads the list anew.
    void refresh();
    /// Grows whenever the list has been read anew; 0 before the first time.
    int revision() const { return m_revision; }
    const QList<PulseSink>& sinks() const { return m_sinks; }
    /// The device of this name, else the default one, else the first one; null when there is none.
    const PulseSink* sinkFor(const QByteArray& name) const;

private:
    static void onState(pa_context* context, void* self);
    static void onEvent(pa_context*, pa_subscription_event_type_t type, uint32_t, void* self);
    static void onServer(pa_context*, const pa_server_info* server, void* self);
    static void onSink(pa_context*, const pa_sink_info* sink, int end, void* self);

    struct Release {
        void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
        void operator()(pa_context* context) const;
    };
    std::unique_ptr<pa_mainloop, Release> m_loop;
    std::unique_ptr<pa_context, Release> m_context;
    QList<PulseSink> m_sinks;
    QList<PulseSink> m_incoming; ///< the list being read
    QByteArray m_defaultSink;
    int m_revision = 0;
    bool m_reading = false;
    bool m_outdated = false; ///< something changed while it was read
};
