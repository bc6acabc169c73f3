#include "app/crashrestart.h"
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
