#include "capture/pulseconnection_linux.h"

#include <QDeadlineTimer>
#include <QThread>

#include <algorithm>
#include <utility>

namespace {

using namespace std::chrono_literals;

constexpr char ClientName[] = "Tidewell";
constexpr auto ReadyTimeout = 5s;
/// How long a server may refuse. Its queue holds five clients that wait, and is empty a moment later; a server
/// that is not running refuses for ever.
constexpr auto RefusalTimeout = 1s;
constexpr auto PollInterval = 50ms;
constexpr auto PingInterval = 1s;

/// The answer comes by a callback; when there will be none, the connection has failed and iterate() tells.
void unref(pa_operation* operation)
{
    if (operation)
        pa_operation_unref(operation);
}

} // namespace

void PulseConnection::Release::operator()(pa_context* context) const
{
    pa_context_set_state_callback(context, nullptr, nullptr);
    pa_context_disconnect(context);
    pa_context_unref(context);
}

std::unique_ptr<PulseConnection> PulseConnection::ready(const std::function<bool()>& giveUp, QString& error)
{
    const QDeadlineTimer readyUntil(ReadyTimeout);
    const QDeadlineTimer refusedUntil(RefusalTimeout);
    auto server = std::make_unique<PulseConnection>();
    while (server->revision() == 0) {
        if (giveUp())
            return nullptr;
        const bool refused = !server->iterate(PollInterval);
        if (readyUntil.hasExpired() || (refused && refusedUntil.hasExpired())) {
            error = server->errorString();
            return nullptr;
        }
        if (refused) {
            QThread::msleep(PollInterval.count());
            server = std::make_unique<PulseConnection>();
        }
    }
    return server;
}

PulseConnection::PulseConnection()
    : m_loop(pa_mainloop_new()), m_context(pa_context_new(pa_mainloop_get_api(m_loop.get()), ClientName))
{
    pa_context_set_state_callback(m_context.get(), onState, this);
    // To start a server is the business of the session; it would be waited for.
    pa_context_connect(m_context.get(), nullptr, PA_CONTEXT_NOAUTOSPAWN, nullptr);
}

PulseConnection::~PulseConnection() = default;

bool PulseConnection::iterate(std::chrono::milliseconds atMost)
{
    const int microseconds = int(std::chrono::microseconds(atMost).count());
    // A connection that failed at once has no events, and would be waited for in vain.
    return PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context.get())) &&
           pa_mainloop_prepare(m_loop.get(), microseconds) >= 0 && pa_mainloop_poll(m_loop.get()) >= 0 &&
           pa_mainloop_dispatch(m_loop.get()) >= 0 && PA_CONTEXT_IS_GOOD(pa_context_get_state(m_context.get()));
}

void PulseConnection::waitForLists(std::chrono::milliseconds atMost)
{
    const QDeadlineTimer left(atMost);
    while (m_revision == 0 && !left.hasExpired()) {
        if (!iterate(std::chrono::milliseconds(left.remainingTime())))
            return;
    }
}

QString PulseConnection::errorString() const
{
    const int error = pa_context_errno(m_context.get());
    return QString::fromUtf8(pa_strerror(error == PA_OK ? PA_ERR_TIMEOUT : error));
}

void PulseConnection::onState(pa_context* context, void* self)
{
    if (pa_context_get_state(context) != PA_CONTEXT_READY)
        return;
    pa_context_set_subscribe_callback(context, onEvent, self);
    constexpr auto Mask =
        pa_subscription_mask_t(PA_SUBSCRIPTION_MASK_SINK | PA_SUBSCRIPTION_MASK_SOURCE | PA_SUBSCRIPTION_MASK_SERVER);
    unref(pa_context_subscribe(context, Mask, nullptr, nullptr));
    static_cast<PulseConnection*>(self)->refresh();
}

void PulseConnection::onEvent(pa_context*, pa_subscription_event_type_t type, uint32_t, void* self)
{
    // A device changes with every touch of its volume; a server, when another device becomes the default.
    const bool ofServer = (type & PA_SUBSCRIPTION_EVENT_FACILITY_MASK) == PA_SUBSCRIPTION_EVENT_SERVER;
    if (ofServer || (type & PA_SUBSCRIPTION_EVENT_TYPE_MASK) != PA_SUBSCRIPTION_EVENT_CHANGE)
        static_cast<PulseConnection*>(self)->refresh();
}

void PulseConnection::refresh()
{
    if (m_reading) {
        m_outdated = true;
        return;
    }
    m_reading = true;
    m_outdated = false;
    m_incomingSinks.clear();
    m_incomingSources.clear();
    unref(pa_context_get_server_info(m_context.get(), onServer, this));
    unref(pa_context_get_sink_info_list(m_context.get(), onSink, this));
    unref(pa_context_get_source_info_list(m_context.get(), onSource, this));
}

void PulseConnection::onServer(pa_context*, const pa_server_info* server, void* self)
{
    auto* const that = static_cast<PulseConnection*>(self);
    that->m_defaultSink = server ? server->default_sink_name : nullptr;
    that->m_defaultSource = server ? server->default_source_name : nullptr;
}

std::chrono::milliseconds PulseConnection::ping()
{
    if (m_pingIsUnanswered)
        return std::chrono::milliseconds(m_pinged.elapsed());
    if (!m_pinged.isValid() || m_pinged.hasExpired(std::chrono::milliseconds(PingInterval).count())) {
        m_pingIsUnanswered = true;
        m_pinged.start();
        unref(pa_context_get_server_info(m_context.get(), onPong, this));
    }
    return 0ms;
}

void PulseConnection::onPong(pa_context*, const pa_server_info*, void* self)
{
    static_cast<PulseConnection*>(self)->m_pingIsUnanswered = false;
}

void PulseConnection::onSink(pa_context*, const pa_sink_info* sink, int end, void* self)
{
    if (end == 0)
        static_cast<PulseConnection*>(self)->m_incomingSinks.append({sink->name, QString::fromUtf8(sink->description),
                                                                     sink->monitor_source_name, sink->monitor_source,
                                                                     sink->sample_spec, sink->channel_map});
}

/// The sources come last: the server answers in order.
void PulseConnection::onSource(pa_context*, const pa_source_info* source, int end, void* self)
{
    auto* const that = static_cast<PulseConnection*>(self);
    if (end == 0) {
        that->m_incomingSources.append({source->name, QString::fromUtf8(source->description), source->index,
                                        source->monitor_of_sink != PA_INVALID_INDEX, source->sample_spec,
                                        source->channel_map});
        return;
    }
    that->m_reading = false;
    that->m_sinks = std::exchange(that->m_incomingSinks, {});
    that->m_sources = std::exchange(that->m_incomingSources, {});
    ++that->m_revision;
    if (that->m_outdated)
        that->refresh();
}

const PulseSink* PulseConnection::sinkFor(const QByteArray& name) const
{
    for (const QByteArray& wanted : {name, m_defaultSink}) {
        const auto found =
            std::find_if(m_sinks.begin(), m_sinks.end(), [&](const PulseSink& sink) { return sink.name == wanted; });
        if (found != m_sinks.end())
            return &*found;
    }
    return m_sinks.isEmpty() ? nullptr : &m_sinks.first();
}

const PulseSource* PulseConnection::source(const QByteArray& name) const
{
    const auto found = std::find_if(m_sources.begin(), m_sources.end(),
                                    [&](const PulseSource& source) { return source.name == name; });
    return found == m_sources.end() ? nullptr : &*found;
}

const PulseSource* PulseConnection::inputFor(const QByteArray& name) const
{
    if (const PulseSource* const named = source(name))
        return named;
    if (const PulseSource* const standard = source(m_defaultSource); standard && !standard->isMonitor)
        return standard;
    const auto first = std::find_if_not(m_sources.begin(), m_sources.end(),
                                        [](const PulseSource& source) { return source.isMonitor; });
    return first == m_sources.end() ? nullptr : &*first;
}
