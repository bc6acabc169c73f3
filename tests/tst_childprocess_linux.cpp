#include "process/childprocess.h"
#include "support/table.h"

#include <QPointer>

#include <csignal>
#include <optional>

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
    void fed_data()
    {
        const Table<bool> row;
        row("waited for", false);
        row("later", true);
    }
    void fed()
    {
        const auto [later] = Table<bool>::fetch();
        ChildProcess child;
        QVERIFY(child.launch("sh", {"-c", "sleep .3; wc -c"}));
        const QByteArray block(100'000, 'x');
        for (int i = 0; i < 50; ++i)
            QVERIFY(child.feed(block));
        QCOMPARE(child.waitingBytes(), 5'000'000);
        std::optional<bool> byItself;
        if (later)
            child.endLater({10s, 1s, 1s}, [&](bool self) { byItself = self; });
        else
            byItself = child.end({10s, 1s, 1s});
        QTRY_VERIFY(byItself.has_value());
        QVERIFY(*byItself);
        QCOMPARE(child.readAll().trimmed(), "5000000");
        QCOMPARE(child.waitingBytes(), 0);
        QVERIFY(!child.feed(block));
        QCOMPARE(child.reasonOfEnd(Exited), "It ended (exit code 0).");
        QVERIFY(child.end({1s, 1s, 1s})); // nothing is left to do
    }

    /// Together with what the child got, what it gives back is all there was.
    void givesBack()
    {
        ChildProcess child;
        QVERIFY(child.launch("sh", {"-c", "head -c 150000; exec sleep 60"}));
        QByteArray fed;
        QByteArray got;
        for (char c = 'a'; c < 'k'; ++c) {
            fed += QByteArray(50'000, c);
            QVERIFY(child.feed(fed.last(50'000)));
        }
        QTRY_VERIFY((got += child.readAll(), got.size() == 150'000));
        QTRY_VERIFY(child.withoutProgress() > 200ms);
        QVERIFY(child.behind() >= child.withoutProgress());
        const QByteArray back = child.takeWaiting().join();
        QVERIFY(back.size() > 200'000 && fed.endsWith(back)); // a pipe holds the rest
        QCOMPARE(child.withoutProgress(), 0ms);
        std::optional<bool> byItself;
        child.endLater({100ms, 5s, 1s}, [&](bool self) { byItself = self; });
        QTRY_VERIFY(byItself.has_value());
        QVERIFY(!*byItself);
    }

    /// Whoever waits hears by the result, and not by the call as well.
    void endWhileItEndsLater()
    {
        ChildProcess child;
        QVERIFY(child.launch("sh", {"-c", "sleep .2; cat"}));
        bool called = false;
        child.endLater({10s, 1s, 1s}, [&](bool) { called = true; });
        QVERIFY(child.end({10s, 1s, 1s}));
        QCoreApplication::processEvents();
        QVERIFY(!called);
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
