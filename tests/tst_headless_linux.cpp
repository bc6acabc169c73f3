#include "settings/channel.h"
#include "station/controlclient.h"
#include "station/folderlock.h"
#include "support/audiofiles.h"
#include "support/pulserig_linux.h"

#include <QCryptographicHash>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// The socket on which a service manager hears from its services.
class NotifySocket {
public:
    explicit NotifySocket(const QString& path) : m_socket(socket(AF_UNIX, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0))
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        qstrncpy(address.sun_path, QFile::encodeName(path).constData(), sizeof address.sun_path);
        m_bound = bind(m_socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) == 0;
    }
    ~NotifySocket() { close(m_socket); }
    Q_DISABLE_COPY_MOVE(NotifySocket)

    bool isBound() const { return m_bound; }
    /// All that has come so far.
    QByteArray heard()
    {
        char message[256];
        for (ssize_t bytes; (bytes = recv(m_socket, message, sizeof message, 0)) > 0;)
            m_heard += QByteArray(message, qsizetype(bytes)) + '\n';
        return m_heard;
    }

private:
    int m_socket;
    bool m_bound = false;
    QByteArray m_heard;
};

} // namespace

/// The real program without a window and a display, on a private sound server.
class TestHeadless : public QObject {
    Q_OBJECT

    QString home() const { return m_home->path(); }
    QString recordings(const QString& channel = {}) const { return m_home->filePath("recordings" + channel); }

    /// Runs the program with these arguments to its end. \return its exit status; its output is in m_output.
    int run(const QStringList& arguments, const QByteArray& input = {})
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.start(TIDEWELL_PROGRAM, arguments);
        process.write(input);
        process.closeWriteChannel();
        if (!process.waitForFinished(20'000))
            return -1;
        m_output = process.readAllStandardOutput();
        m_errors = process.readAllStandardError();
        return process.exitCode();
    }
    std::unique_ptr<QProcess> startHeadless(const QStringList& arguments = {})
    {
        auto process = std::make_unique<QProcess>();
        process->setProcessEnvironment(m_environment);
        process->setProcessChannelMode(QProcess::MergedChannels);
        process->start(TIDEWELL_PROGRAM, QStringList{"--headless"} + arguments);
        return process;
    }
    QJsonObject status(const QString& channel = {})
    {
        run(channel.isEmpty() ? QStringList{"--status"} : QStringList{"--status", "--profile", channel});
        return QJsonDocument::fromJson(m_output).object();
    }
    bool isRecording(const QString& channel = {}) { return status(channel).value("secondsSinceAudio").isDouble(); }
    bool configure(const QStringList& values, const QString& channel = {})
    {
        QStringList arguments;
        if (!channel.isEmpty())
            arguments << "--profile" << channel;
        for (const QString& value : QStringList{"capture/backend=1", "capture/deviceId=line_in", "format/codec=wav",
                                                "updates/checkAtStartup=false"} +
                                        values)
            arguments << "--set" << value;
        return run(arguments) == 0;
    }
    QByteArray journal(const QString& folder) const
    {
        QDirIterator files(folder + "/.tidewell", {"*.jsonl"}, QDir::Files | QDir::Hidden);
        QByteArray text;
        while (files.hasNext()) {
            QFile file(files.next());
            if (file.open(QIODevice::ReadOnly))
                text += file.readAll();
        }
        return text;
    }
    static QStringList wavFiles(const QString& folder)
    {
        return QDir(folder).entryList({"*.wav"}, QDir::Files, QDir::Name);
    }

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_server.start()); }

    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        m_environment = QProcessEnvironment::systemEnvironment();
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "XDG_DATA_HOME", "XDG_CONFIG_HOME"})
            m_environment.remove(QLatin1String(name));
        m_environment.insert("HOME", home());
        m_environment.insert("TMPDIR", home());
        m_environment.insert("XDG_RUNTIME_DIR", home());
        QVERIFY(configure({"output/folder=" + recordings()}));
    }

    void recordsUntilTold()
    {
        QCOMPARE(run({"--status"}), 2);
        const auto program = startHeadless();
        QTRY_VERIFY_WITH_TIMEOUT(isRecording(), 10'000);
        QCOMPARE(run({"--status"}), 0);
        QCOMPARE(status().value("wantedBy").toString(), "scheduler");
        QCOMPARE(run({"--headless"}), 1); // one instance per channel
        QVERIFY(m_errors.contains("Tidewell is already running."));

        // Through the running one, which holds the settings.
        QCOMPARE(run({"--set", "state/auto=false", "--set", "output/serial=7"}), 0);
        QCOMPARE(run({"--get", "output/serial"}), 0);
        QCOMPARE(m_output.trimmed().toInt(), 8); // the restart of the recording has used 7
        QTRY_VERIFY_WITH_TIMEOUT(isRecording(), 5'000);
        QCOMPARE(run({"--stop"}), 0);
        QCOMPARE(run({"--status"}), 1);
        QCOMPARE(run({"--record"}), 0);
        QTRY_VERIFY_WITH_TIMEOUT(isRecording(), 5'000);
        QCOMPARE(status().value("wantedBy").toString(), "manual");

        kill(pid_t(program->processId()), SIGTERM);
        QVERIFY(program->waitForFinished(10'000));
        QCOMPARE(program->exitStatus(), QProcess::NormalExit);
        QCOMPARE(program->exitCode(), 0);
        QCOMPARE(run({"--status"}), 2);
        QCOMPARE(wavFiles(recordings()).size(), 3);
        QFile index(recordings() + "/records.json");
        QVERIFY(index.open(QIODevice::ReadOnly));
        QCOMPARE(QJsonDocument::fromJson(index.readAll()).array().size(), 3);
        const QByteArray told = journal(recordings());
        for (const char* event : {"program.started", "settings.loaded", "recording.wanted", "recording.started",
                                  "device.taken", "file.opened", "file.closed", "recording.stopped", "settings.changed",
                                  "recording.notWanted", "program.ended"})
            QVERIFY2(told.contains(QByteArray("\"event\":\"") + event + '"'), event);
    }

    void readsItsSettingsAgain()
    {
        const auto program = startHeadless();
        QTRY_VERIFY_WITH_TIMEOUT(isRecording(), 10'000);
        const int serial = status().value("file").isString() ? 2 : 0;
        QFile store(home() + "/.config/Quayside/Tidewell.conf");
        QVERIFY(store.open(QIODevice::ReadWrite));
        const QByteArray text = store.readAll().replace("splitMinutes=60", "splitMinutes=30");
        QVERIFY(text.contains("splitMinutes=30"));
        QVERIFY(store.resize(0) && store.seek(0) && store.write(text) > 0);
        store.close();
        kill(pid_t(program->processId()), SIGHUP);
        QTRY_COMPARE(wavFiles(recordings()).size(), 2); // as accepted settings begin a new file
        QCOMPARE(run({"--get", "output/splitMinutes"}), 0);
        QCOMPARE(m_output.trimmed().toInt(), 30);
        QCOMPARE(run({"--get", "output/serial"}), 0);
        QCOMPARE(m_output.trimmed().toInt(), serial + 1); // not what the store has
        QCOMPARE(run({"--exit"}), 0);
        QVERIFY(program->waitForFinished(10'000));
    }

    void channelsStayApart()
    {
        QVERIFY(configure({"output/folder=" + recordings("b"), "capture/deviceId=line_in2"}, "b"));
        QVERIFY(configure({"output/folder=" + recordings()}, "thief"));
        const auto first = startHeadless();
        const auto second = startHeadless({"--profile", "b"});
        QTRY_VERIFY_WITH_TIMEOUT(isRecording(), 10'000);
        QTRY_VERIFY_WITH_TIMEOUT(isRecording("b"), 10'000);
        QCOMPARE(status("b").value("channel").toString(), "b");

        // Two of them would write one index.
        const auto thief = startHeadless({"--profile", "thief"});
        QTRY_VERIFY_WITH_TIMEOUT(status("thief").value("lastError").isString(), 10'000);
        QVERIFY(status("thief").value("lastError").toString().contains(recordings()));
        QVERIFY(!status("thief").value("recording").toBool());
        QCOMPARE(run({"--record", "--profile", "thief"}), 1);
        QCOMPARE(wavFiles(recordings()).size(), 1);

        for (const char* channel : {"", "b", "thief"})
            QCOMPARE(run(QStringList{"--exit"} + (*channel ? QStringList{"--profile", channel} : QStringList())), 0);
        for (QProcess* process : {first.get(), second.get(), thief.get()})
            QVERIFY(process->waitForFinished(10'000));
        QCOMPARE(wavFiles(recordings("b")).size(), 1);
    }

    void tellsItsServiceManager()
    {
        NotifySocket manager(m_home->filePath("notify"));
        QVERIFY(manager.isBound());
        m_environment.insert("NOTIFY_SOCKET", m_home->filePath("notify"));
        m_environment.insert("WATCHDOG_USEC", "600000");
        const auto program = startHeadless();
        QTRY_VERIFY_WITH_TIMEOUT(manager.heard().contains("READY=1"), 10'000);
        QTRY_VERIFY_WITH_TIMEOUT(manager.heard().count("WATCHDOG=1") >= 3, 5'000);
        kill(pid_t(program->processId()), SIGSTOP); // hung
        const auto before = manager.heard().count("WATCHDOG=1");
        QTest::qWait(1500);
        QVERIFY(manager.heard().count("WATCHDOG=1") <= before + 1);
        QCOMPARE(run({"--set", "alerts/subject=lost"}), 3); // it would write over what went into the store now
        kill(pid_t(program->processId()), SIGCONT);
        kill(pid_t(program->processId()), SIGTERM);
        QVERIFY(program->waitForFinished(10'000));
        QVERIFY(manager.heard().contains("STOPPING=1"));
    }

    void comesBackAfterACrashAsItself()
    {
        QVERIFY(configure({"output/folder=" + recordings("b"), "general/restartOnCrash=true"}, "b"));
        const auto program = startHeadless({"--profile", "b"});
        QTRY_VERIFY_WITH_TIMEOUT(isRecording("b"), 10'000);
        kill(pid_t(program->processId()), SIGSEGV);
        QVERIFY(program->waitForFinished(10'000));
        QCOMPARE(program->exitCode(), 128 + SIGSEGV);
        QTRY_VERIFY_WITH_TIMEOUT(status("b").value("lastError").toString().contains("crash-"), 15'000);
        const QString report = status("b").value("lastError").toString().section(' ', -1);
        QFile file(report);
        QVERIFY2(file.open(QIODevice::ReadOnly), qPrintable(report));
        const QByteArray trace = file.readAll();
        QVERIFY2(trace.contains("Signal (0: an uncaught exception): 011") && trace.count("\n") > 5, trace);
        QVERIFY(journal(recordings("b")).contains("program.crashed"));

        const QString bundle = m_home->filePath("support.zip");
        QCOMPARE(run({"--profile", "b", "--set", "alerts/smtpPass=-"}, "hush-hush\n"), 0);
        QCOMPARE(run({"--profile", "b", "--support", bundle}), 0);
        QProcess unzip;
        unzip.start("python3", {"-c",
                                "import sys, zipfile\nz = zipfile.ZipFile(sys.argv[1])\nassert z.testzip() is None\n"
                                "for n in z.namelist(): print(n, z.read(n).decode())",
                                bundle});
        QVERIFY(unzip.waitForFinished());
        const QByteArray content = unzip.readAllStandardOutput();
        for (const char* part : {"versions.txt Tidewell", "settings.txt", "journal/crash-", ".jsonl", "program.crashed",
                                 "status.json", "devices.txt"})
            QVERIFY2(content.contains(part), part);
        QVERIFY(!content.contains("hush-hush") && !content.contains("smtpPass"));

        QCOMPARE(run({"--profile", "b", "--exit"}), 0);
        QTRY_COMPARE(run({"--profile", "b", "--status"}), 2);
    }

    /// Settings saved while the trigger is on, or in its run-on, must not leave a recording that nobody ends.
    void triggerSurvivesSettings()
    {
        const int contact = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC);
        QVERIFY(contact >= 0 && grantpt(contact) == 0 && unlockpt(contact) == 0);
        QVERIFY(configure({"output/folder=" + recordings(), "state/auto=false", "trigger/kind=2",
                           QStringLiteral("trigger/serialPort=") + ptsname(contact), "trigger/holdSeconds=2"}));
        const auto program = startHeadless();
        QTRY_COMPARE_WITH_TIMEOUT(status().value("trigger").toString(), "off", 10'000);
        const auto say = [contact](const QByteArray& line) {
            QCOMPARE(write(contact, line, size_t(line.size())), line.size());
        };
        say("REC ON\n");
        QTRY_VERIFY_WITH_TIMEOUT(isRecording(), 5'000);
        QCOMPARE(run({"--set", "output/splitMinutes=30"}), 0);
        QCOMPARE(status().value("trigger").toString(), "on");
        QVERIFY(status().value("recording").toBool());
        say("REC OFF\n");
        QTest::qWait(500);
        QCOMPARE(run({"--set", "trigger/holdSeconds=3"}), 0);
        QVERIFY(status().value("recording").toBool());
        QTRY_VERIFY_WITH_TIMEOUT(!status().value("recording").toBool(), 4'000);

        say("REC ON\n");
        QTRY_VERIFY_WITH_TIMEOUT(isRecording(), 5'000);
        QCOMPARE(run({"--set", "trigger/onCommand=GO"}), 0);
        QVERIFY(!status().value("recording").toBool());
        QVERIFY(!status().value("wanted").toBool());
        say("GO\n");
        QTRY_VERIFY_WITH_TIMEOUT(isRecording(), 5'000);
        close(contact); // the adapter is unplugged: told once, and the recording goes on
        QTRY_VERIFY_WITH_TIMEOUT(status().value("lastError").toString().contains("was lost"), 5'000);
        QCOMPARE(status().value("trigger").toString(), "off");
        QVERIFY(status().value("recording").toBool());
        QCOMPARE(run({"--exit"}), 0);
        QVERIFY(program->waitForFinished(10'000));
        const QByteArray told = journal(recordings());
        QCOMPARE(told.count("\"reason\":\"trigger\""), 5); // three starts, two stops
        QCOMPARE(told.count("was lost"), 1);
    }

    void waitsBeforeTheThirdRestart()
    {
        QVERIFY(configure({"output/folder=" + recordings(), "general/restartOnCrash=true"}));
        auto program = startHeadless();
        qint64 previous = 0, id = 0;
        const auto running = [&] {
            QFile lock(home() + "/tidewell.lock");
            id = lock.open(QIODevice::ReadOnly) ? lock.readLine().trimmed().toLongLong() : 0;
            return id != 0 && id != previous && run({"--status"}) != 2;
        };
        QList<int> seconds;
        for (int crash = 0; crash < 4; ++crash) {
            QElapsedTimer clock;
            clock.start();
            QTRY_VERIFY_WITH_TIMEOUT(running(), 20'000);
            seconds << int(clock.elapsed() / 1000);
            previous = id;
            if (crash < 3)
                kill(pid_t(id), SIGSEGV);
        }
        QVERIFY2(seconds[1] < 4 && seconds[2] < 4, "the first two at once");
        QVERIFY2(seconds[3] >= 5 && seconds[3] < 10, qPrintable(QString::number(seconds[3])));
        QCOMPARE(run({"--exit"}), 0);
        QTRY_COMPARE(run({"--status"}), 2);
        QVERIFY(journal(recordings()).contains("has waited for 5 seconds"));
    }

    void hashesEveryFileInTheEnd()
    {
        auto program = startHeadless();
        QTRY_VERIFY_WITH_TIMEOUT(isRecording(), 10'000);
        QCOMPARE(run({"--exit"}), 0);
        QVERIFY(program->waitForFinished(10'000));
        QFile file(recordings() + '/' + wavFiles(recordings()).value(0));
        QCryptographicHash hash(QCryptographicHash::Sha256);
        QVERIFY(file.open(QIODevice::ReadOnly) && hash.addData(&file));
        program = startHeadless();
        QTRY_VERIFY_WITH_TIMEOUT(isRecording(), 10'000);
        QTRY_VERIFY_WITH_TIMEOUT(journal(recordings()).contains(hash.result().toHex()), 10'000);
        QCOMPARE(run({"--exit"}), 0);
        QVERIFY(program->waitForFinished(10'000));
    }

private:
    PulseRig m_server;
    std::unique_ptr<QTemporaryDir> m_home;
    QProcessEnvironment m_environment;
    QByteArray m_output, m_errors;
};

QTEST_GUILESS_MAIN(TestHeadless)
#include "tst_headless_linux.moc"
