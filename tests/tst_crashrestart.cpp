#include "app/crashrestart.h"
#include "app/restarthistory.h"
#include "support/table.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <csignal>
#include <stdexcept>

namespace {

constexpr char FolderVariable[] = "TIDEWELL_TEST_FOLDER";

/// Never gets to a depth of -1; the compiler does not know.
int overflowStack(int depth)
{
    volatile char filler[4096];
    filler[depth % 4096] = char(depth);
    return depth < 0 ? 0 : overflowStack(depth + 1) + filler[0];
}

/// The process that crashes; its successor leaves a file that tells the arguments it was given.
int crash(const QStringList& arguments)
{
    if (arguments.value(1) == CrashRestart::RestartedArgument) {
        std::fputs("Nobody reads this: who started the process that crashed has closed the pipe.\n", stderr);
        QFile file(qEnvironmentVariable(FolderVariable) + QStringLiteral("/restarted"));
        return file.open(QIODevice::WriteOnly) && file.write(arguments.mid(1).join(u' ').toUtf8()) > 0 ? 0 : 1;
    }
    static const bool wanted = arguments.value(2) == QLatin1String("restart");
    CrashRestart::install(wanted);
    const QString how = arguments.value(1);
    if (how == QLatin1String("exception"))
        throw std::runtime_error("nobody catches this");
    if (how == QLatin1String("overflow"))
        return overflowStack(0);
    return std::raise(how.toInt());
}

} // namespace

class TestCrashRestart : public QObject {
    Q_OBJECT

    using EndsAndRestartsRows = Table<QString, bool, int>;
    using Waits = Table<QList<int>, QList<int>>; // seconds that each run lasted; that the restart after it waits

private Q_SLOTS:
    void endsAndRestarts_data()
    {
        const EndsAndRestartsRows row;
        for (const int number : {SIGSEGV, SIGABRT, SIGFPE, SIGILL})
            row("signal " + QByteArray::number(number), QString::number(number), true, 128 + number);
        row("uncaught exception", "exception", true, 1);
        row("restart not wanted", QString::number(SIGSEGV), false, 128 + SIGSEGV);
#ifdef Q_OS_LINUX
        row("stack overflow", "overflow", true, 128 + SIGSEGV);
#endif
    }
    void endsAndRestarts()
    {
        const auto [how, restart, exitCode] = EndsAndRestartsRows::fetch();
        QTemporaryDir folder;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QLatin1String(FolderVariable), folder.path());
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QCoreApplication::applicationFilePath(), {how, restart ? "restart" : "stay"});
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), exitCode);

        const QString trace = folder.filePath("restarted");
        const auto restarted = [&] {
            QFile file(trace);
            return file.open(QIODevice::ReadOnly) && file.readAll() == CrashRestart::RestartedArgument;
        };
        if (restart)
            QTRY_VERIFY(restarted());
        else
            QVERIFY(!QTest::qWaitFor(restarted, 500));
    }

    void waitsLongerAndLonger_data()
    {
        const Waits row;
        row("at once, again and again", {0, 0, 0, 0, 0, 0, 0, 0, 0}, {0, 0, 5, 10, 20, 40, 60, 60, 60});
        row("twice per minute", {40, 25, 40, 25, 40}, {0, 0, 0, 0, 0});
        row("three times per minute", {20, 20, 20, 20, 20}, {0, 0, 5, 10, 10});
        row("a good hour in between", {1, 1, 1, 3600, 1, 1}, {0, 0, 5, 0, 0, 5});
        row("the clock is set back", {1, 1, -3600, 1, 1}, {0, 0, 0, 0, 5});
    }
    void waitsLongerAndLonger()
    {
        const auto [lengths, waits] = Waits::fetch();
        QTemporaryDir folder;
        const QString path = folder.filePath("new/restarts.txt");
        qint64 nowMs = 1'800'000'000'000;
        QList<int> seconds;
        for (const int length : lengths) {
            nowMs += length * 1000;
            const auto wait = RestartHistory::add(path, nowMs);
            nowMs += wait.count();
            seconds << int(wait.count() / 1000);
        }
        QCOMPARE(seconds, waits);
        QCOMPARE(QFileInfo(path).size(), 512); // it never grows
    }

    void standsRubbish()
    {
        using RestartHistory::Restart;
        QCOMPARE(RestartHistory::fromText("1 2\n\xff\n3\n4 -5\n6 99999999999\n 7 8\n9 10 11\n-1 0\n"
                                          "9223372036854775807 1\n12 13"),
                 (QList<Restart>{{1, 2}, {12, 13}}));
        // A restart that nobody will remember waits, for all we know it is the hundredth.
        QCOMPARE(RestartHistory::add("/proc/nobody/writes/here", 1).count(), 5000);
    }
};

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (qEnvironmentVariableIsSet(FolderVariable))
        return crash(app.arguments());
    TestCrashRestart test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_crashrestart.moc"
