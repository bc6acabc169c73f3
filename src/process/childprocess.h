#pragma once

#include <QElapsedTimer>
#include <QProcess>
#include <QTimer>

#include <chrono>
#include <deque>
#include <functional>

/// A child program of ours: a QProcess that waits for nothing without a limit. What the child says on its error output
/// appears on this program's own. Used by one thread, that of its owner.
class ChildProcess : public QProcess {
    Q_OBJECT
public:
    /// How long end() waits after each step, before it takes the next one.
    struct Patience {
        std::chrono::milliseconds endOfInput; ///< 0: this step is left out, and the input stays open
        std::chrono::milliseconds terminate;
        std::chrono::milliseconds kill;
    };

    explicit ChildProcess(QObject* parent = nullptr);

    /// Lets the child end together with this program, however that ends. To be called before launch(). Without it the
    /// child sees the end of its input then, and goes on.
    void endWithThisProgram();
    /// Waits up to 5 s until it has started. \return false with the reason in errorString().
    bool launch(const QString& program, const QStringList& arguments);
    bool isRunning() const { return state() != NotRunning; }

    /// Hands data to its standard input. What it does not take at once waits in memory, and nothing waits for it.
    /// \return false when the child has ended.
    bool feed(const QByteArray& data);
    /// Bytes that it was fed and has not taken.
    qint64 waitingBytes() const { return m_waitingBytes; }
    /// How long something has waited without the child taking anything; 0 while nothing waits.
    std::chrono::milliseconds withoutProgress() const;
    /// How long ago the oldest data that wait were fed; 0 while nothing waits.
    std::chrono::milliseconds behind() const;
    /// Gives back what the child has not taken, oldest first. If it comes to life again, it still gets the first part
    /// of that: 16 KB, or the rest of one piece that is larger.
    QList<QByteArray> takeWaiting();

    /// Closes its input, then asks it to terminate, then kills it; waits after each step until it has ended.
    /// \return whether it ended before it was asked to terminate.
    bool end(const Patience& patience);
    /// The same without waiting; the patience with its input begins anew whenever it takes some of it. Data may not be
    /// fed any more. \param ended gets what end() returns, from the event loop, unless this object dies before.
    void endLater(const Patience& patience, std::function<void(bool byItself)> ended);
    /// Kills the child without waiting. This object deletes itself when the child has ended: sooner, that would wait.
    void reap();
    /// Why the child does not run any more. \param exited the sentence for a child that ended by itself, with %1 for
    /// its exit code.
    QString reasonOfEnd(const QString& exited) const;

private:
    struct Waiting {
        QByteArray data;
        QElapsedTimer age;
    };
    void pump();
    void onTaken(qint64 bytes);
    void takeNextStep();
    void reportEnd();

    std::deque<Waiting> m_waiting; ///< until the child has taken the last byte of an item
    size_t m_handedOver = 0; ///< items of m_waiting that QProcess has
    qint64 m_takenOfFirst = 0; ///< bytes
    qint64 m_waitingBytes = 0;
    QElapsedTimer m_progress; ///< since the child took something, or since something waits

    enum class Step { None, EndOfInput, Terminate, Kill, Over };
    Step m_step = Step::None; ///< of endLater()
    Patience m_patience{};
    std::function<void(bool)> m_ended;
    QTimer m_stepTimer;
};
