#include "capture/wasapiendpoints_win.h"
#include "capture/wasapiloopbackcapture_win.h"
#include "capture/wasapiloopbackworker_win.h"
#include "support/samples.h"

#include <QAudioSink>
#include <QBuffer>
#include <QGuiApplication>
#include <QMediaDevices>
#include <QSignalSpy>
#include <QTest>

/// Loopback through Core Audio. Wine knows no loopback mode; its packets are those of a capture endpoint. Needs a sound
/// server with a playback device "Program", whose monitor Wine offers as a capture endpoint.
class TestLoopbackWin : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void reportsWhatFails();
    void recordsPackets();
};

void TestLoopbackWin::reportsWhatFails()
{
    const QList<PlaybackDevice> devices = playbackDevices();
    WasapiLoopbackCapture capture("{0.0.0.00000000}.{no such endpoint}");
    QSignalSpy errors(&capture, &AudioCapture::errorOccurred);
    QSignalSpy running(&capture, &AudioCapture::runningChanged);
    QVERIFY(capture.start({44100, 2}));
    QTRY_COMPARE(running, (QList<QVariantList>{{true}, {false}}));
    const QString text = devices.isEmpty() ? "No playback device is available for loopback capture."
                                           : "Could not obtain the capture service.";
    QCOMPARE(errors, (QList<QVariantList>{{text}}));
    QCOMPARE(capture.description() == "(default playback device)", devices.isEmpty());
}

void TestLoopbackWin::recordsPackets()
{
    const ComApartment apartment(COINIT_APARTMENTTHREADED);
    QByteArray monitor;
    Wasapi::eachEndpoint(eCapture, [&monitor](const PlaybackDevice& endpoint) {
        if (endpoint.name == "Monitor of Program")
            monitor = endpoint.id;
    });
    const QList<QAudioDevice> outputs = QMediaDevices::audioOutputs();
    const auto program = std::find_if(outputs.begin(), outputs.end(),
                                      [](const QAudioDevice& output) { return output.description() == "Program"; });
    if (monitor.isEmpty() || program == outputs.end())
        QSKIP("there is no sound server with the device \"Program\"");

    QAudioFormat format;
    format.setSampleFormat(QAudioFormat::Float); // Wine's own, which nothing needs to convert
    format.setChannelCount(2);
    format.setSampleRate(48000);
    QAudioSink player(*program, format);
    QByteArray sound = QByteArray::fromHex("0000803e0000003f").repeated(20 * 48000); // 0.25 to the left, 0.5 to the right
    QBuffer playing(&sound);
    playing.open(QIODevice::ReadOnly);
    player.start(&playing);

    WasapiLoopbackWorker worker(monitor, {22050, 1}, 0.5, false, 0);
    QSignalSpy errors(&worker, &LoopbackWorker::failed);
    QByteArray heard;
    connect(&worker, &LoopbackWorker::pcmReady, this, [&heard](const QByteArray& pcm) { heard += pcm; });
    worker.start();
    const auto isHeard = [&heard] { return samplesOf(heard).count(6144) > 22050; }; // half of the mean
    const bool wasHeard = QTest::qWaitFor(isHeard, 20'000);
    worker.requestStop();
    QVERIFY(worker.wait(3000));
    QVERIFY(wasHeard);
    QCOMPARE(errors.size(), 0);
}

QTEST_MAIN(TestLoopbackWin)
#include "tst_loopback_win.moc"
