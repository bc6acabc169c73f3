#include "app/appsettings.h"
#include "capture/capturefactory.h"
#include "capture/pcmconvert.h"
#include "capture/streamcapture.h"
#include "encode/codecs.h"
#include "engine/recorder.h"
#include "support/audiofiles.h"
#include "support/counting.h"
#include "support/table.h"

#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QProcess>
#include <QSignalSpy>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <csignal>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace std::chrono_literals;

namespace {

constexpr char RecordArgument[] = "--record";
constexpr char Exited[] = "Stream decoder exited - reconnecting";
constexpr char Ended[] = "The stream ended and reconnection is disabled.";

/// The process that is to be killed: records into a folder and prints what its recorder says.
int record(const QStringList& arguments)
{
    AppSettings& settings = AppSettings::instance();
    settings.backend = int(CaptureBackend::Stream);
    settings.outputFolder = arguments.value(2);
    settings.streamUrl = arguments.value(3);
    settings.codec = arguments.value(4).toInt();
    Recorder recorder(nullptr);
    const auto print = [](const QString& text) { dprintf(STDOUT_FILENO, "%s\n", qPrintable(text)); };
    QObject::connect(&recorder, &Recorder::logMessage, qApp, print);
    QObject::connect(&recorder, &Recorder::errorOccurred, qApp, print);
    return recorder.start() ? QCoreApplication::exec() : 1;
}

/// Command line and id of each child of a process.
QMap<QString, int> childrenOf(qint64 pid)
{
    const auto read = [](const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    QMap<QString, int> result;
    for (const QByteArray& id : read(QString("/proc/%1/task/%1/children").arg(pid)).simplified().split(' ')) {
        if (!id.isEmpty())
            result[read(QString("/proc/%1/cmdline").arg(QString(id))).replace('\0', ' ')] = id.toInt();
    }
    return result;
}

/// A capture, and all that it says.
struct Listener {
    Listener()
    {
        const auto say = [this](const QString& text) { said << text; };
        QObject::connect(&capture, &AudioCapture::warning, &capture, say);
        QObject::connect(&capture, &AudioCapture::errorOccurred, &capture, say);
        QObject::connect(&capture, &AudioCapture::dataReady, &capture, [this](const QByteArray& block) {
            torn += block.size() % 4;
            audio += block;
        });
    }
    /// Milliseconds of silence at a place.
    qint64 silenceAt(qsizetype at) const
    {
        const auto sound = std::find_if(audio.begin() + at, audio.end(), [](char byte) { return byte != 0; });
        return (sound - audio.begin() - at) / 4 * 1000 / 44100;
    }

    StreamCapture capture;
    QStringList said;
    QByteArray audio;
    qsizetype torn = 0;
};

} // namespace

class TestStreamCapture : public QObject {
    Q_OBJECT

    using FailureRows = Table<QString, QStringList>;

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QFile::link(QT_TESTCASE_SOURCEDIR "/support/ffmpegstandin", m_folder.filePath("ffmpeg")));
        qputenv("PATH", m_folder.path().toUtf8() + ':' + qgetenv("PATH"));
        QTcpServer freePort;
        QVERIFY(freePort.listen(QHostAddress::LocalHost));
        m_host = QString("127.0.0.1:%1").arg(freePort.serverPort());
    }
    void init()
    {
        qunsetenv("DECODER");
        m_settings.streamUrl = " http://" + m_host + "/live.mp3 ";
        m_settings.streamReconnect = true;
        m_settings.streamStall = 1; // which is 3
        m_settings.inputGainDb = 0;
    }

    void argumentsAndDelays()
    {
        const auto arguments = [](bool reconnect) { return StreamCapture::arguments("u", {8000, 1}, reconnect); };
        QCOMPARE(arguments(true).join(u' ').remove(QCoreApplication::applicationVersion()),
                 "-hide_banner -loglevel error -user_agent Tidewell/ -reconnect 1 -reconnect_streamed 1 "
                 "-reconnect_delay_max 10 -i u -vn -flush_packets 1 -f s16le -ar 8000 -ac 1 pipe:1");
        QCOMPARE(arguments(true).size() - arguments(false).size(), 6);
        QList<std::chrono::seconds> delays;
        for (int attempt = 0; attempt < 8; ++attempt)
            delays << StreamCapture::reconnectDelay(attempt);
        QCOMPARE(delays, (QList{1s, 2s, 5s, 10s, 20s, 30s, 30s, 30s}));
    }

    void failure_data()
    {
        const FailureRows row;
        row("no URL", " ", {"No stream URL has been configured."});
        row("not a URL", "http://[", {"The stream URL is not valid: http://["});
        row("no server", "http://" + m_host + "/live.mp3", {Exited, Ended});
        row("no such host", "http://tidewell.invalid/", {Exited, Ended});
        row("no sound", "file:///proc/version", {Exited, Ended});
    }
    void failure()
    {
        const auto [url, said] = FailureRows::fetch();
        m_settings.streamUrl = url;
        m_settings.streamReconnect = false;
        Listener listener;
        QCOMPARE(listener.capture.start({44100, 2}), said.size() == 2);
        QTRY_COMPARE_WITH_TIMEOUT(listener.said, said, 20'000);
        QVERIFY(!listener.capture.isRunning());
    }

    void noFfmpeg()
    {
        QProcess recorder;
        recorder.setEnvironment({"PATH="});
        recorder.start(QCoreApplication::applicationFilePath(), {RecordArgument, m_folder.path(), "http://x", "3"});
        QVERIFY(recorder.waitForFinished());
        QVERIFY(recorder.readAll().endsWith("\nStream logging needs ffmpeg, which was not found on this system. Install "
                                            "it or place ffmpeg next to Tidewell.\n"));
    }

    /// Two attempts that fail, one that ends in the middle of a sample, then one that delivers the same again.
    void outagesAndTornFrames()
    {
        const QByteArray stream = Counting::frames(1, 44100);
        QFile file(m_folder.filePath("stream"));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(stream + "odd") == stream.size() + 3);
        file.close();
        qputenv("DECODER", "cd " + m_folder.path().toUtf8() + R"(; echo >>launches; [ $(wc -l <launches) -gt 2 ] || exit 1
            for n in 1 2 4 7 997 4093 30001 70001 80000; do dd bs=$n count=1 status=none; sleep .03; done <stream)");
        m_settings.inputGainDb = 6;
        QByteArray louder = stream;
        applyGainS16(louder, {GainStage::factorFromDb(6), m_settings.softLimit});
        Listener listener;
        QVERIFY(listener.capture.start({44100, 2}));
        const QString connected = "Stream connected: 127.0.0.1/live.mp3";
        QTRY_COMPARE_WITH_TIMEOUT(listener.said, (QStringList{Exited, Exited, connected, Exited, connected, Exited}), 9000);
        listener.capture.stop(); // between two attempts

        QCOMPARE(listener.torn, 0);
        const auto near = [](qint64 ms, qint64 expected) { return ms >= expected && ms < expected + 700; };
        const qint64 before = listener.silenceAt(0);
        QVERIFY2(near(before, 3000), QByteArray::number(before));
        const qsizetype first = listener.audio.indexOf(louder);
        QVERIFY(first > 0);
        const qint64 between = listener.silenceAt(first + louder.size());
        QVERIFY2(near(between, 1000), QByteArray::number(between));
        QVERIFY(listener.audio.endsWith(louder));
        QCOMPARE(listener.audio.count(louder), 2);
    }

    /// It ignores the request to end, and goes on to deliver.
    void stubbornDecoder()
    {
        qputenv("DECODER", "trap '' TERM; while :; do head -c 8000 /dev/zero; sleep .05; done");
        Listener listener;
        QVERIFY(listener.capture.start({44100, 2}));
        QTRY_VERIFY(!listener.audio.isEmpty());
        const qsizetype heard = listener.audio.size();
        QElapsedTimer time;
        time.start();
        listener.capture.stop();
        QVERIFY2(time.elapsed() >= 2000 && time.elapsed() < 3500, QByteArray::number(time.elapsed()));
        QCOMPARE(childrenOf(getpid()).size(), 0);
        QTest::qWait(200);
        QCOMPARE(listener.audio.size(), heard);
    }

    /// The decoder dies with the program; the encoder sees the end of its input and finishes its file.
    void programKilled()
    {
        prctl(PR_SET_CHILD_SUBREAPER, 1);
        const QTemporaryDir folder;
        qputenv("DECODER", "while :; do head -c 17640 /dev/zero; sleep .1; done");
        QProcess recorder;
        recorder.start(QCoreApplication::applicationFilePath(), {RecordArgument, folder.path(), "http://x", "0"});
        QMap<QString, int> children;
        QTRY_COMPARE((children = childrenOf(recorder.processId())).size(), 2);
        QTest::qWait(2000);
        recorder.kill();
        QVERIFY(recorder.waitForFinished());

        for (auto child = children.cbegin(); child != children.cend(); ++child) {
            int status = -1;
            QCOMPARE(waitpid(child.value(), &status, 0), child.value());
            QCOMPARE(status, child.key().contains("head") ? SIGKILL : 0);
        }
        const QStringList files = QDir(folder.path()).entryList(QDir::Files);
        QCOMPARE(files.size(), 1);
        const double seconds = AudioFiles::probe(folder.filePath(files[0]))["duration"].toString().toDouble();
        QVERIFY2(seconds > 1, QByteArray::number(seconds));
    }

    /// The server hangs; then it loses its source, and dies.
    void icecast()
    {
        QProcess server;
        QProcess source;
        const auto serve = [&] {
            server.start(QT_TESTCASE_SOURCEDIR "/support/streamserver", {m_host.section(u':', 1)});
            QTcpSocket socket;
            do {
                socket.connectToHost(QHostAddress::LocalHost, m_host.section(u':', 1).toUShort());
            } while (!socket.waitForConnected());
            source.startCommand("ffmpeg -v quiet -re -f lavfi -i anoisesrc -c:a flac -content_type application/ogg "
                                "-f ogg icecast://source:secret@" + m_host + "/live.mp3");
        };
        const auto end = [](QProcess& process) {
            process.kill();
            return process.waitForFinished();
        };
        const QString connected = "Stream connected: 127.0.0.1/live.mp3";
        const QString stalled = "Stream stalled for 3 s - reconnecting";
        Listener listener;
        serve();
        QElapsedTimer t; t.start();
        connect(&listener.capture, &AudioCapture::warning, this, [&](auto x) { qInfo() << t.elapsed() << x << listener.audio.size() / 176; });
        QVERIFY(listener.capture.start({44100, 2}));
        QTRY_VERIFY_WITH_TIMEOUT(listener.said.endsWith(connected), 15'000);

        listener.said.clear();
        qInfo() << t.elapsed() << "STOP";
        kill(pid_t(server.processId()), SIGSTOP);
        QTRY_COMPARE_WITH_TIMEOUT(listener.said, QStringList{stalled}, 15'000);
        kill(pid_t(server.processId()), SIGCONT);
        QTRY_COMPARE_WITH_TIMEOUT(listener.said, (QStringList{stalled, connected}), 15'000);

        listener.said.clear();
        qInfo() << t.elapsed() << "KILL";
        QVERIFY(end(source));
        QTRY_COMPARE_WITH_TIMEOUT(listener.said, (QStringList{stalled, Exited}), 15'000);
        QVERIFY(end(server));
        QTRY_COMPARE_WITH_TIMEOUT(listener.said, (QStringList{stalled, Exited, Exited}), 15'000);
        serve();
        QTRY_COMPARE_WITH_TIMEOUT(listener.said, (QStringList{stalled, Exited, Exited, connected}), 15'000);
        QTest::qWait(2000);
        qInfo() << t.elapsed() << listener.audio.size() / 176;
        QVERIFY(end(source) && end(server));
    }

private:
    QTemporaryDir m_folder;
    QString m_host; ///< where nobody listens, unless the test serves there
    AppSettings& m_settings = AppSettings::instance();
};

int main(int argc, char* argv[])
{
    QCoreApplication app(argc, argv);
    if (app.arguments().value(1) == RecordArgument)
        return record(app.arguments());
    TestStreamCapture test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_streamcapture_linux.moc"
