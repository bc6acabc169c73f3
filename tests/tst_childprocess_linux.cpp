#include "process/childprocess.h"
#include "support/table.h"

#include <QElapsedTimer>
#include <QPointer>

#include <csignal>

using namespace std::chrono_literals;

namespace {

constexpr char Exited[] = "It ended (exit code %1).";

/// Runs a shell command, and returns once the shell says that it has come to it.
bool runReady(ChildProcess& child, const QString& command)
{
    return child.launch("sh", {"-c", command}) && child.waitForReadyRead(10'000) && child.readAll() == "ready\n";
}

} // namespace

class TestChildProcess : public QObject {
    Q_OBJECT

    using EndRows = Table<QString, ChildProcess::Patience, bool, QString>;

private Q_SLOTS:
    void noSuchProgram()
    {
        ChildProcess child;
        QVERIFY(!child.launch("/nowhere/ffmpeg", {}));
        QVERIFY(!child.isRunning());
        QVERIFY(!child.errorString().isEmpty());
    }

    /// What it was fed comes through whole, and the end of its input lets it end.
    void fed()
    {
        ChildProcess child;
        QVERIFY(child.launch("wc", {"-c"}));
        const QByteArray block(100'000, 'x');
        for (int i = 0; i < 50; ++i)
            QVERIFY(child.feed(block, 200'000));
        QVERIFY(child.bytesToWrite() <= 300'000);
        QVERIFY(child.end({10s, 1s, 1s}));
        QCOMPARE(child.readAll().trimmed(), "5000000");
        QCOMPARE(child.reasonOfEnd(Exited), "It ended (exit code 0).");
    }

    void takesNothing()
    {
        ChildProcess child;
        QVERIFY(child.launch("sleep", {"60"}));
        const QByteArray block(1'000'000, 'x'); // more than a pipe holds
        QVERIFY(child.feed(block, 10));
        QElapsedTimer time;
        time.start();
        QVERIFY(!child.feed(block, 10));
        QVERIFY(time.elapsed() >= 4500);
        QVERIFY(child.isRunning());
        QVERIFY(child.bytesToWrite() > 10 && child.bytesToWrite() <= block.size());
    }

    void feedAfterItsEnd()
    {
        ChildProcess child;
        QVERIFY(child.launch("sh", {"-c", "exit 3"}));
        QVERIFY(child.waitForFinished());
        QVERIFY(!child.feed("x", 10));
        QCOMPARE(child.reasonOfEnd(Exited), "It ended (exit code 3).");
        QVERIFY(child.end({1s, 1s, 1s})); // nothing is left to do
    }

    void end_data()
    {
        const EndRows row;
        row("ends with its input", "echo ready; cat", {10s, 10s, 10s}, true, "It ended (exit code 0).");
        row("told to terminate", "echo ready; exec sleep 60", {100ms, 10s, 10s}, false, "Process crashed");
        row("input left open", "echo ready; exec cat", {0s, 10s, 10s}, false, "Process crashed");
        row("answers the request", "trap 'exit 5' TERM; echo ready; while :; do sleep .05; done", {0s, 10s, 10s}, false,
            "It ended (exit code 5).");
        row("has to be killed", "trap '' TERM; echo ready; while :; do sleep .05; done", {0s, 300ms, 10s}, false,
            "Process crashed");
    }
    void end()
    {
        const auto [command, patience, byItself, reason] = EndRows::fetch();
        ChildProcess child;
        QVERIFY(runReady(child, command));
        QCOMPARE(child.end(patience), byItself);
        QVERIFY(!child.isRunning());
        QCOMPARE(child.reasonOfEnd(Exited), reason);
    }

    /// It is told nothing it could ignore, nobody waits for it, and the object goes with it.
    void reap()
    {
        QPointer<ChildProcess> child = new ChildProcess(this);
        QVERIFY(runReady(*child, "trap '' TERM; echo ready; while :; do sleep .05; done"));
        const auto id = pid_t(child->processId());
        child->reap();
        QVERIFY(child); // not yet: its deletion would have waited
        QTRY_VERIFY(!child);
        QCOMPARE(kill(id, 0), -1);

        child = new ChildProcess(this);
        QVERIFY(child->launch("true", {}));
        QVERIFY(child->waitForFinished());
        child->reap();
        QTRY_VERIFY(!child);
    }
};

QTEST_GUILESS_MAIN(TestChildProcess)
#include "tst_childprocess_linux.moc"
