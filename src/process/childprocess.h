#pragma once

#include <QProcess>

#include <chrono>

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

    /// Hands data to its standard input; what it does not take at once waits in memory. With more than mostWaiting
    /// bytes there, it first waits for as long as the child takes anything at all within 5 s.
    /// \return false when the child has ended, still leaves more than that waiting, or its input is closed.
    bool feed(const QByteArray& data, qint64 mostWaiting);

    /// Closes its input, then asks it to terminate, then kills it; waits after each step until it has ended.
    /// \return whether it ended before it was asked to terminate.
    bool end(const Patience& patience);
    /// Kills the child without waiting. This object deletes itself when the child has ended: sooner, that would wait.
    void reap();
    /// Why the child does not run any more. \param exited the sentence for a child that ended by itself, with %1 for
    /// its exit code.
    QString reasonOfEnd(const QString& exited) const;
};
