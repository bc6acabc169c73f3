#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QList>
#include <QString>

#include <pulse/pulseaudio.h>

#include <chrono>
#include <functional>
#include <memory>

/// A playback device of the sound server.
struct PulseSink {
    QByteArray name;
    QString description; ///< the display name
    QByteArray monitorName; ///< the source that gives what the device plays
    quint32 monitorIndex = 0; ///< never given twice by a server, unlike the name
    pa_sample_spec format = {};
    pa_channel_map channels = {};
};

/// What the sound server can record from: an input device, or the monitor of a playback device.
struct PulseSource {
    QByteArray name;
    QString description; ///< the display name
    quint32 index = 0; ///< never given twice by a server, unlike the name
    bool isMonitor = false;
    pa_sample_spec format = {};
    pa_channel_map channels = {};
};

/// A connection to the sound server that keeps up-to-date lists of its playback devices and its sources. Nothing in it
/// waits for the server, except iterate(). Used by one thread, any.
class PulseConnection {
public:
    /// Waits until the lists are there, 5 seconds at most, and connects anew when the server refuses: it does so for a
    /// moment when many connect at once, as all the programs of a station may after the machine was started.
    /// \param giveUp called again and again; once it returns true, the result is null, and the error empty.
    static std::unique_ptr<PulseConnection> ready(const std::function<bool()>& giveUp, QString& error);

    PulseConnection();
    ~PulseConnection();
    Q_DISABLE_COPY_MOVE(PulseConnection)

    /// Handles what has come from the server; if there is nothing, waits up to this time for it.
    /// \return false once the connection has failed.
    bool iterate(std::chrono::milliseconds atMost);
    /// Waits until the lists have been read, the connection has failed, or the time is up.
    void waitForLists(std::chrono::milliseconds atMost);
    /// Why the connection failed, or that it takes too long.
    QString errorString() const;
    pa_context* context() const { return m_context.get(); }
    /// Asks the server for a sign of life, once per second when called often enough.
    /// \return for how long the last question has waited for its answer; 0 when it was answered.
    std::chrono::milliseconds ping();

    /// Reads the lists anew.
    void refresh();
    /// Grows whenever the lists have been read anew; 0 before the first time.
    int revision() const { return m_revision; }
    const QList<PulseSink>& sinks() const { return m_sinks; }
    const QList<PulseSource>& sources() const { return m_sources; }
    /// The playback device of this name, else the default one, else the first one; null when there is none.
    const PulseSink* sinkFor(const QByteArray& name) const;
    /// The source of this name, or null.
    const PulseSource* source(const QByteArray& name) const;
    /// The source of this name, else the default one, else the first one; null when there is none. A monitor is taken
    /// by its name only: it is the default where there is no input device, and nobody has chosen it.
    const PulseSource* inputFor(const QByteArray& name) const;

private:
    static void onState(pa_context* context, void* self);
    static void onEvent(pa_context*, pa_subscription_event_type_t type, uint32_t, void* self);
    static void onServer(pa_context*, const pa_server_info* server, void* self);
    static void onPong(pa_context*, const pa_server_info*, void* self);
    static void onSink(pa_context*, const pa_sink_info* sink, int end, void* self);
    static void onSource(pa_context*, const pa_source_info* source, int end, void* self);

    struct Release {
        void operator()(pa_mainloop* loop) const { pa_mainloop_free(loop); }
        void operator()(pa_context* context) const;
    };
    std::unique_ptr<pa_mainloop, Release> m_loop;
    std::unique_ptr<pa_context, Release> m_context;
    QList<PulseSink> m_sinks;
    QList<PulseSource> m_sources;
    QList<PulseSink> m_incomingSinks; ///< the list being read
    QList<PulseSource> m_incomingSources;
    QByteArray m_defaultSink;
    QByteArray m_defaultSource;
    QElapsedTimer m_pinged; ///< since the server was last asked for a sign of life; invalid before the first time
    bool m_pingIsUnanswered = false;
    int m_revision = 0;
    bool m_reading = false;
    bool m_outdated = false; ///< something changed while the lists were read
};
