#pragma once

#include <QObject>

#include <chrono>
#include <functional>
#include <memory>

/// Runs tasks one after the other on a thread of its own, for whatever may wait for a disk, a share or a server.
/// A task that hangs never holds up the owner: a task that does not end in time is left to itself when the worker
/// dies. So a task must not use the owner or anything that dies with it; it returns its result by a Reply.
///
/// Nor may a task use QRegularExpression, or a name filter of QDir, which is one: with Qt 6.4 for MinGW, the program
/// crashes when a thread that has used it ends.
class Worker {
    struct State;

public:
    /// The most tasks that wait; post() refuses more.
    static constexpr size_t MaxTasks = 20'000;
    /// Idle: for work that must not get in the way of anything else on the machine, neither processor nor disk.
    enum class Priority { Normal, Idle };

    /// Calls a function on the owner's thread, from its event loop, unless the worker is gone by then.
    class Reply {
    public:
        void operator()(std::function<void()> function) const;

    private:
        friend class Worker;
        explicit Reply(std::shared_ptr<State> state) : m_state(std::move(state)) {}
        std::shared_ptr<State> m_state;
    };

    /// The thread starts with the first task. \param owner outlives the worker, usually by having it as a member.
    explicit Worker(QObject* owner, Priority priority = Priority::Normal);
    /// Forgets the tasks that wait, and does not wait for the one that runs.
    ~Worker();
    Q_DISABLE_COPY_MOVE(Worker)

    /// \return false when too many wait already; the task is then not taken.
    bool post(std::function<void()> task);
    Reply reply() const { return Reply(m_state); }
    /// Whether nothing runs and nothing waits.
    bool isIdle() const;
    /// Waits until all tasks are done, but not longer than this. \return whether they are.
    bool finish(std::chrono::milliseconds patience);

private:
    static void run(const std::shared_ptr<State>& state, Priority priority);

    std::shared_ptr<State> m_state;
    Priority m_priority;
};
