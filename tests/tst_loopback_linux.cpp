#include "app/appsettings.h"
#include "capture/audiocapture.h"
#include "capture/capturefactory.h"
#include "capture/loopback.h"
#include "support/counting.h"
#include "support/pulserig_linux.h"
#include "support/samples.h"

#include <QElapsedTimer>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

/// The mix of a playback device, recorded for real through a sound server.
class TestLoopbackLinux : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void listsThePlaybackDevices();
    void recordsBitExactly();
    void convertsOtherFormats();
    void fillsWithSilence_data();
    void fillsWithSilence();
    void followsTheDefaultDevice();
    void takesTheDefaultForADeviceThatGoes();
    void stopsWhileTheServerIsFrozen();
    void endsWithTheServer();

public:
    static inline PulseRig* rig = nullptr;

private:
    void start(const QByteArray& device, const PcmFormat& format);

    AppSettings& m_settings = AppSettings::instance();
    std::unique_ptr<AudioCapture> m_capture;
    std::unique_ptr<QSignalSpy> m_errors;
    QByteArray m_heard;
};

void TestLoopbackLinux::initTestCase()
{
    m_settings.backend = int(CaptureBackend::Loopback);
    m_settings.softLimit = false;
    PulseRig::control("set-default-sink program");
}

/// Returns once sound comes in.
void TestLoopbackLinux::start(const QByteArray& device, const PcmFormat& format)
{
    m_settings.playbackId = device;
    m_capture.reset(createCapture(nullptr));
    m_errors = std::make_unique<QSignalSpy>(m_capture.get(), &AudioCapture::errorOccurred);
    m_heard.clear();
    connect(m_capture.get(), &AudioCapture::dataReady, this, [this](const QByteArray& pcm) { m_heard += pcm; });
    QVERIFY(m_capture->start(format));
    QTRY_VERIFY(!m_heard.isEmpty());
    m_heard.clear();
}

void TestLoopbackLinux::listsThePlaybackDevices()
{
    QList<QPair<QByteArray, QString>> devices;
    for (const PlaybackDevice& device : playbackDevices())
        devices.append({device.id, device.name});
    QCOMPARE(devices, (QList<QPair<QByteArray, QString>>{{"program", "Program"}, {"program2", "Program2"}}));
}

void TestLoopbackLinux::recordsBitExactly()
{
    start("program", {44100, 2});
    constexpr qint64 Frames = 4 * 44100;
    rig->play(Counting::frames(1, Frames));
    QTRY_VERIFY_WITH_TIMEOUT(m_heard.contains(Counting::frames(Frames, 1)), 15'000);
    QVERIFY(m_heard.contains(Counting::frames(1, Frames)));
    m_capture->stop();
    QCOMPARE(m_errors->size(), 0);
}

void TestLoopbackLinux::convertsOtherFormats()
{
    start("program", {22050, 1});
    rig->play(QByteArray::fromHex("1027204e").repeated(44100)); // 10000 to the left, 20000 to the right
    const QByteArray mean = QByteArray::fromHex("983a");
    QTRY_VERIFY(m_heard.contains(mean) && m_heard.endsWith(QByteArray(2, '\0')));
    const qsizetype frames = samplesOf(m_heard).count(15000);
    QVERIFY2(qAbs(frames - 22050) <= 2, qPrintable(QString::number(frames)));
    QVERIFY(m_heard.contains(mean.repeated(frames)));
}

void TestLoopbackLinux::fillsWithSilence_data()
{
    QTest::addColumn<QString>("suspend");
    QTest::newRow("nothing is played") << "0";
    QTest::newRow("the device is suspended") << "1";
}

void TestLoopbackLinux::fillsWithSilence()
{
    QFETCH(QString, suspend);
    PulseRig::control("suspend-sink program " + suspend);
    start("program", {44100, 1});
    QElapsedTimer elapsed;
    elapsed.start();
    QTest::qWait(4000);
    const qint64 frames = m_heard.size() / 2;
    const qint64 due = elapsed.elapsed() * 44100 / 1000;
    QVERIFY2(qAbs(frames - due) < 44100 / 5, qPrintable(QString::number(frames - due)));
    QCOMPARE(m_heard.count('\0'), m_heard.size());
    PulseRig::control("suspend-sink program 0");
}

void TestLoopbackLinux::followsTheDefaultDevice()
{
    start({}, {48000, 2});
    QCOMPARE(m_capture->description(), "Program");
    PulseRig::control("set-default-sink program2");
    QTRY_COMPARE(m_capture->description(), "Program2");
    m_heard.clear();
    rig->play(QByteArray::fromHex("10271027").repeated(44100), "program2");
    QTRY_VERIFY(m_heard.size() - m_heard.count('\0') > 150'000); // the server has made 48 kHz of it
    QTRY_VERIFY(m_heard.endsWith(QByteArray(96'000, '\0'))); // or the server takes the rest along to the new default
    QCOMPARE(m_errors->size(), 0);
    PulseRig::control("set-default-sink program");
}

void TestLoopbackLinux::takesTheDefaultForADeviceThatGoes()
{
    const auto load = [] {
        return PulseRig::control("load-module module-null-sink sink_name=third norewinds=1").trimmed();
    };
    QByteArray module = load();
    start("third", {44100, 2});
    const QString name = m_capture->description();
    QVERIFY(name != "Program");
    PulseRig::control("unload-module " + module);
    QTRY_COMPARE(m_capture->description(), "Program");
    rig->play(Counting::frames(1, 44100));
    QTRY_VERIFY(m_heard.contains(Counting::frames(1, 44100)));
    module = load();
    QTRY_COMPARE(m_capture->description(), name);
    PulseRig::control("unload-module " + module);
    QCOMPARE(m_errors->size(), 0);
}

void TestLoopbackLinux::stopsWhileTheServerIsFrozen()
{
    start("program", {44100, 2});
    rig->freeze(true);
    QTRY_VERIFY(m_heard.endsWith(QByteArray(2 * 44100 * 4, '\0'))); // kept in time all the same
    QElapsedTimer waited;
    waited.start();
    m_capture->stop();
    const qint64 stopMs = waited.restart();
    QCOMPARE(playbackDevices().size(), 0);
    const qint64 listMs = waited.elapsed();
    rig->freeze(false);
    QVERIFY2(stopMs < 1000, qPrintable(QString::number(stopMs)));
    QVERIFY2(listMs < 2500, qPrintable(QString::number(listMs)));
}

void TestLoopbackLinux::endsWithTheServer()
{
    start("program", {44100, 2});
    rig->kill();
    QTRY_VERIFY(!m_capture->isRunning());
    const QString lost = "The connection to the sound server was lost (Connection terminated).";
    QTRY_COMPARE(*m_errors, (QList<QVariantList>{{lost}}));
    QVERIFY(m_capture->start({}));
    QTRY_COMPARE(m_errors->size(), 2);
    QCOMPARE(m_errors->at(1)[0].toString(), "Could not connect to the sound server (Connection refused).");
}

int main(int argc, char* argv[])
{
    PulseRig rig;
    if (!rig.start())
        qFatal("The private sound server did not start.");
    QGuiApplication app(argc, argv);
    TestLoopbackLinux::rig = &rig;
    TestLoopbackLinux test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_loopback_linux.moc"
