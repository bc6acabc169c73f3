#include "process/worker.h"

#include "process/idlepriority.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

struct Worker::State {
    std::mutex mutex;
    std::condition_variable changed;
    std::deque<std::function<void()>> tasks;
    QObject* owner = nullptr; ///< null: the worker is gone
    bool running = false; ///< a task
    bool started = false; ///< the thread
};

Worker::Worker(QObject* owner, Priority priority) : m_state(std::make_shared<State>()), m_priority(priority)
{
    m_state->owner = owner;
}

Worker::~Worker()
{
    const std::lock_guard lock(m_state->mutex);
    m_state->owner = nullptr;
    m_state->tasks.clear();
    m_state->changed.notify_all();
}

void Worker::Reply::operator()(std::function<void()> function) const
{
    // Under the lock, the owner cannot die before the call is queued; what is queued dies with it.
    const std::lock_guard lock(m_state->mutex);
    if (m_state->owner)
        QMetaObject::invokeMethod(m_state->owner, std::move(function), Qt::QueuedConnection);
}

bool Worker::post(std::function<void()> task)
{
    const std::lock_guard lock(m_state->mutex);
    if (m_state->tasks.size() >= MaxTasks)
        return false;
    m_state->tasks.push_back(std::move(task));
    if (!std::exchange(m_state->started, true))
        std::thread([state = m_state, priority = m_priority] { run(state, priority); }).detach();
    m_state->changed.notify_all();
    return true;
}

bool Worker::isIdle() const
{
    const std::lock_guard lock(m_state->mutex);
    return m_state->tasks.empty() && !m_state->running;
}

bool Worker::finish(std::chrono::milliseconds patience)
{
    std::unique_lock lock(m_state->mutex);
    return m_state->changed.wait_for(lock, patience, [this] { return m_state->tasks.empty() && !m_state->running; });
}

void Worker::run(const std::shared_ptr<State>& state, Priority priority)
{
    if (priority == Priority::Idle)
        IdlePriority::forThisThread();
    std::unique_lock lock(state->mutex);
    for (;;) {
        state->changed.wait(lock, [&state] { return !state->tasks.empty() || !state->owner; });
        if (state->tasks.empty())
            return;
        std::function<void()> task = std::move(state->tasks.front());
        state->tasks.pop_front();
        state->running = true;
        lock.unlock();
        task();
        task = nullptr; // what it holds must go before it counts as done
        lock.lock();
        state->running = false;
        state->changed.notify_all();
    }
}
