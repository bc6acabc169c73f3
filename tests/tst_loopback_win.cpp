#include "capture/wasapiendpoints_win.h"
#include "capture/wasapiloopbackcapture_win.h"
#include "capture/wasapiloopbackworker_win.h"
#include "support/samples.h"

#include <QAudioSink>
#include <QBuffer>
#include <QSignalSpy>
#include <QTest>

/// Wine has no loopback mode: what is seen of it is the error. The packets are those of a capture endpoint, the monitor
/// of a sound server's device "Program".
class TestLoopbackWin : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void errorText()
    {
        WasapiLoopbackCapture capture("{0.0.0.00000000}.{no such endpoint}");
        QSignalSpy errors(&capture, &AudioCapture::errorOccurred);
        QVERIFY(capture.start({44100, 2}));
        QTRY_COMPARE(errors.value(0).value(0).toString(), playbackDevices().isEmpty()
                                                              ? "No playback device is available for loopback capture."
                                                              : "Could not obtain the capture service.");
    }

    void packets()
    {
        QByteArray monitor;
        const ComApartment apartment(COINIT_APARTMENTTHREADED);
        Wasapi::eachEndpoint(eCapture, [&monitor](const PlaybackDevice& endpoint) {
            if (endpoint.name == "Monitor of Program")
                monitor = endpoint.id;
        });
        QVERIFY2(!monitor.isEmpty(), "the sound server of scripts/build-windows is missing");
        QAudioFormat format; // Wine's own, which nothing needs to convert
        format.setSampleFormat(QAudioFormat::Float);
        format.setChannelCount(2);
        format.setSampleRate(48000);
        QByteArray sound = QByteArray::fromHex("0000803e0000003f").repeated(20 * 48000); // 0.25 left, 0.5 right
        QBuffer playing(&sound);
        QAudioSink player(format);
        playing.open(QIODevice::ReadOnly);
        player.start(&playing);

        WasapiLoopbackWorker worker(monitor, {22050, 1}, 0.5, false, 0);
        QByteArray heard;
        connect(&worker, &LoopbackWorker::pcmReady, this, [&heard](const QByteArray& pcm) { heard += pcm; });
        worker.start();
        const bool wasHeard = QTest::qWaitFor([&] { return samplesOf(heard).count(6144) > 22050; }, 20'000);
        worker.requestStop();
        QVERIFY(worker.wait(3000) && wasHeard);
    }
};

QTEST_MAIN(TestLoopbackWin)
#include "tst_loopback_win.moc"
