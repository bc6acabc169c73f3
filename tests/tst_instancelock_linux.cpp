#include "app/instancelock.h"
#include "app/lockholder.h"
#include "support/table.h"

#include <QDir>
#include <QProcess>
#include <QSysInfo>
#include <QTemporaryDir>

#include <csignal>
#include <cstdio>
#include <functional>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr uid_t Nobody = 65534;

/// Takes the lock and keeps it until its input ends.
int hold()
{
    InstanceLock lock;
    std::puts(lock.take() && lock.problem().isEmpty() ? "held" : "not held");
    std::fflush(stdout);
    return std::getchar();
}

/// An instance of its own, of this user or another one.
std::unique_ptr<QProcess> startInstance(uid_t user)
{
    auto process = std::make_unique<QProcess>();
    if (user != geteuid())
        process->setChildProcessModifier([user] { [[maybe_unused]] const int done = setuid(user); });
    process->start(QCoreApplication::applicationFilePath(), {"hold"});
    process->waitForReadyRead(10'000);
    if (process->readAllStandardOutput() != "held\n")
        process->kill();
    return process;
}

bool write(const QString& name, const QByteArray& content)
{
    QFile file(QDir::temp().filePath(name));
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray madeBy(qint64 processId, const QByteArray& program, const QByteArray& host)
{
    return QByteArray::number(processId) + '\n' + program + '\n' + host + '\n';
}

} // namespace

class TestInstanceLock : public QObject {
    Q_OBJECT

    /// What is done before; whether the program then goes on, and with a lock of which name (empty: with none).
    using InTheWay = Table<std::function<bool()>, bool, QString>;

private Q_SLOTS:
    void init()
    {
        qunsetenv("TMPDIR");
        m_folder = std::make_unique<QTemporaryDir>();
        QVERIFY(chmod(QFile::encodeName(m_folder->path()).constData(), 01777) == 0);
        qputenv("TMPDIR", QFile::encodeName(m_folder->path()));
    }
    void cleanup()
    {
        if (m_instance) {
            m_instance->closeWriteChannel(); // which ends it
            m_instance->waitForFinished();
            m_instance.reset();
        }
        const rlimit none{RLIM_INFINITY, RLIM_INFINITY};
        setrlimit(RLIMIT_FSIZE, &none);
    }

    void takesWhatNobodyHolds_data()
    {
        const InTheWay row;
        const QString usual = "tidewell.lock";
        const QString besideIt = "tidewell." + lockUserName() + ".lock";
        const QByteArray host = QSysInfo::machineHostName().toUtf8();
        const QByteArray self = QFileInfo(QCoreApplication::applicationFilePath()).fileName().toUtf8();
        row(
            "nothing", [] { return true; }, true, usual);
        row(
            "an empty file", [=] { return write(usual, {}); }, true, usual);
        row(
            "rubbish", [=] { return write(usual, "\xff\x00-1\n\n"); }, true, usual);
        row(
            "a dead process", [=] { return write(usual, madeBy(0x3ffffff, self, host)); }, true, usual);
        row(
            "another computer's name", [=] { return write(usual, madeBy(getpid(), self, "elsewhere")); }, true, usual);
        row(
            "the number is a living process of this program's by now",
            [=] { return write(usual, madeBy(getpid(), self, host)); }, true, usual);
        row(
            "a folder of that name", [=] { return QDir::temp().mkdir(usual); }, true, besideIt);
        row(
            "a link of that name", [=] { return QFile::link("/dev/null", QDir::temp().filePath(usual)); }, true,
            besideIt);
        row(
            "a living instance", [this] { return start(geteuid()); }, false, "");
        row(
            "the folder is missing", [] { return qputenv("TMPDIR", "/nowhere/at/all"); }, true, "");
        row(
            "no file can be made in the folder", [] { return qputenv("TMPDIR", "/proc"); }, true, "");
        row(
            "the disk is full", [] { return fillDisk(); }, true, "");
        if (geteuid() != 0)
            return; // nobody else can act for other users
        row(
            "another user's, stale",
            [=] { return write(usual, madeBy(0x3ffffff, self, "elsewhere")) && give(usual, Nobody); }, true, besideIt);
        row(
            "another user's living instance", [this] { return start(Nobody); }, true, besideIt);
        row(
            "a living instance that found another user's",
            [=, this] {
                // Gone in the meantime.
                return write(usual, {}) && give(usual, Nobody) && start(geteuid()) &&
                       QFile::remove(QDir::temp().filePath(usual));
            },
            false, "");
    }
    void takesWhatNobodyHolds()
    {
        const auto [prepare, goesOn, name] = InTheWay::fetch();
        QVERIFY(prepare());
        InstanceLock lock;
        QCOMPARE(lock.take(), goesOn);
        QCOMPARE(lock.problem().isEmpty(), !goesOn || !name.isEmpty());
        if (!goesOn || name.isEmpty())
            return;
        QCOMPARE(lockHolder(QDir::temp().filePath(name)), LockHolder::ThisUser);
        InstanceLock second;
        QVERIFY(!second.take());
    }

private:
    bool start(uid_t user)
    {
        m_instance = startInstance(user);
        return m_instance->state() == QProcess::Running;
    }
    static bool give(const QString& name, uid_t user)
    {
        return chown(QFile::encodeName(QDir::temp().filePath(name)).constData(), user, user) == 0;
    }
    static bool fillDisk()
    {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit none{0, RLIM_INFINITY}; // no write succeeds
        return setrlimit(RLIMIT_FSIZE, &none) == 0;
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<QProcess> m_instance;
};

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == QLatin1String("hold"))
        return hold();
    TestInstanceLock test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_instancelock_linux.moc"
