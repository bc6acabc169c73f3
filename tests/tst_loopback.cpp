#include "capture/loopbackcapture.h"
#include "capture/loopbackworker.h"
#include "settings/appsettings.h"
#include "support/samples.h"
#include "support/table.h"

#include <QDeadlineTimer>
#include <QSemaphore>
#include <QSignalSpy>

namespace {

QSemaphore delivered;

/// Delivers a packet and a silent one.
class FakeWorker : public LoopbackWorker {
public:
    using LoopbackWorker::LoopbackWorker;
    void run() override
    {
        setMixFormat({88200, 2, 16, false, 4});
        deliver(reinterpret_cast<const uchar*>(bytesOf({1, 1, 2, 2, 3, 3, 4, 4}).constData()), 4);
        deliver(nullptr, 4);
        delivered.release();
        while (deviceId() == "hangs" || !stopRequested())
            msleep(10);
    }
};

class FakeCapture : public LoopbackCapture {
public:
    using LoopbackCapture::LoopbackCapture;
    LoopbackWorker* createWorker(const QByteArray& id, const PcmFormat& format, double gain, bool limiter) override
    {
        return new FakeWorker(id, format, gain, limiter);
    }
    QSignalSpy blocks{this, &AudioCapture::dataReady};
    QSignalSpy running{this, &AudioCapture::runningChanged};
};

} // namespace

class TestLoopback : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void mixFormat_data()
    {
        const QByteArray surround = "feff 0800 80bb0000 00701700 2000 2000 1600 2000 3f060000";
        const Table<QByteArray, MixFormat> row;
        row("integers", "0100 0200 44ac0000 10b10200 0400 1000 0000", {44100, 2, 16, false, 4});
        row("floats", "0300 0100 80bb0000 00ee0200 0400 2000 0000", {48000, 1, 32, true, 4});
        row("extensible floats", surround + "0300000000001000800000aa00389b71", {48000, 8, 32, true, 32});
        row("extensible integers", surround + "0100000000001000800000aa00389b71", {48000, 8, 32, false, 32});
        row("extensible, cut off", surround, {48000, 8, 32, false, 32});
    }
    void mixFormat()
    {
        const auto [wave, mix] = Table<QByteArray, MixFormat>::fetch();
        QCOMPARE(MixFormat::fromWaveFormat(QByteArray::fromHex(wave)), mix);
    }

    void numbers()
    {
        QList<qint64> frames;
        for (const int since : {119, 120, 121, 8 * 3'600'000}) // the last: after a night's sleep
            frames << Loopback::silenceFrames(std::chrono::milliseconds(since), 44100, Loopback::SilenceAfter);
        QCOMPARE(frames, (QList<qint64>{0, 5292, 5336, 441'000}));
        QCOMPARE(Loopback::hexadecimal(0x7aF0), "00007af0");
    }

    void runs()
    {
        for (const char* id : {"stops", "hangs"}) {
            FakeCapture capture(id);
            capture.start({44100, 1});
            delivered.acquire();
            const QDeadlineTimer inTime(3000 + 2000);
            capture.stop();
            QVERIFY(!inTime.hasExpired());
            QTRY_COMPARE(capture.running, (QList<QVariantList>{{true}, {false}}));
            QCOMPARE(capture.blocks.size(), 0);
        }
        FakeCapture capture("stops");
        capture.start({44100, 2});
        capture.start({44100, 1}); // replaces the other
        delivered.acquire(2);
        QTRY_COMPARE(capture.blocks, (QList<QVariantList>{{bytesOf({1, 3})}, {bytesOf({0, 0})}}));
        QCOMPARE(capture.running.size(), 2);
    }
};

QTEST_GUILESS_MAIN(TestLoopback)
#include "tst_loopback.moc"
