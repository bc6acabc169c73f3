#include "app/appsettings.h"
#include "capture/loopbackcapture.h"
#include "capture/loopbackworker.h"
#include "support/samples.h"

#include <QElapsedTimer>
#include <QSemaphore>
#include <QSignalSpy>
#include <QTest>

namespace {

/// A device that runs ahead, and may hang.
class ScriptedWorker : public LoopbackWorker {
public:
    using LoopbackWorker::LoopbackWorker;
    bool hangs = false;
    QSemaphore reported;

    void run() override
    {
        setMixFormat({88200, 2, 16, false, 4});
        const QByteArray packet = bytesOf({1, 1, 2, 2, 3, 3, 4, 4});
        deliver(reinterpret_cast<const uchar*>(packet.constData()), 4);
        deliver(nullptr, 4);
        reported.release();
        while (hangs || !stopRequested())
            msleep(10);
    }
};

class ScriptedCapture : public LoopbackCapture {
public:
    using LoopbackCapture::LoopbackCapture;
    bool hangs = false;
    ScriptedWorker* worker = nullptr;

protected:
    LoopbackWorker* createWorker(const QByteArray& id, const PcmFormat& format, double gain, bool limiter) override
    {
        worker = new ScriptedWorker(id, format, gain, limiter);
        worker->hangs = hangs;
        return worker;
    }
};

QByteArray hex(const char* digits)
{
    return QByteArray::fromHex(digits);
}

} // namespace

class TestLoopback : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsTheMixFormat_data();
    void readsTheMixFormat();
    void countsSilence_data();
    void countsSilence();
    void quotesResultCodes() { QCOMPARE(Loopback::hexadecimal(0x0000'7aF0U), "00007af0"); }
    void keepsRunsApart();
    void endsAWorkerThatHangs();
};

void TestLoopback::readsTheMixFormat_data()
{
    QTest::addColumn<QByteArray>("wave");
    QTest::addColumn<MixFormat>("mix");
    QTest::newRow("plain integers") << hex("0100 0200 44ac0000 10b10200 0400 1000 0000")
                                    << MixFormat{44100, 2, 16, false, 4};
    QTest::newRow("plain floats") << hex("0300 0100 80bb0000 00ee0200 0400 2000 0000")
                                  << MixFormat{48000, 1, 32, true, 4};
    const QByteArray surround = hex("feff 0800 80bb0000 00701700 2000 2000 1600 2000 3f060000");
    QTest::newRow("extensible floats, 8 channels")
        << surround + hex("0300000000001000800000aa00389b71") << MixFormat{48000, 8, 32, true, 32};
    QTest::newRow("extensible integers") << surround + hex("0100000000001000800000aa00389b71")
                                         << MixFormat{48000, 8, 32, false, 32};
    QTest::newRow("extensible, cut off") << surround << MixFormat{48000, 8, 32, false, 32};
    QTest::newRow("nothing") << QByteArray() << MixFormat{};
}

void TestLoopback::readsTheMixFormat()
{
    QFETCH(QByteArray, wave);
    QTEST(MixFormat::fromWaveFormat(wave), "mix");
}

void TestLoopback::countsSilence_data()
{
    QTest::addColumn<int>("since");
    QTest::addColumn<int>("rate");
    QTest::addColumn<qint64>("frames");
    QTest::newRow("not yet") << 119 << 44100 << qint64(0);
    QTest::newRow("due") << 120 << 44100 << qint64(5292);
    QTest::newRow("rounded down") << 121 << 44100 << qint64(5336);
    QTest::newRow("the machine was asleep") << 8 * 3'600'000 << 48000 << qint64(480'000);
}

void TestLoopback::countsSilence()
{
    QFETCH(int, since);
    QFETCH(int, rate);
    QTEST(Loopback::silenceFrames(std::chrono::milliseconds(since), rate, Loopback::SilenceAfter), "frames");
}

void TestLoopback::keepsRunsApart()
{
    AppSettings::instance().softLimit = false;
    ScriptedCapture capture("some device");
    QSignalSpy blocks(&capture, &AudioCapture::dataReady);
    QSignalSpy running(&capture, &AudioCapture::runningChanged);
    QCOMPARE(capture.description(), "(default playback device)");
    capture.start({44100, 1});
    capture.worker->reported.acquire();
    capture.stop();
    QTRY_COMPARE(running, (QList<QVariantList>{{true}, {false}}));
    QCOMPARE(blocks.size(), 0);

    for (int run = 0; run < 2; ++run) { // the second replaces the first
        capture.start({44100, 1});
        capture.worker->reported.acquire();
    }
    QTRY_COMPARE(blocks.size(), 2);
    QCOMPARE(blocks[0][0].toByteArray(), bytesOf({1, 3}));
    QCOMPARE(blocks[1][0].toByteArray(), bytesOf({0, 0}));
    QVERIFY(capture.isRunning());
    QCOMPARE(running.size(), 4);
}

void TestLoopback::endsAWorkerThatHangs()
{
    ScriptedCapture capture("");
    capture.hangs = true;
    QSignalSpy running(&capture, &AudioCapture::runningChanged);
    capture.start({});
    capture.worker->reported.acquire();
    QElapsedTimer waited;
    waited.start();
    capture.stop();
    QVERIFY2(waited.elapsed() < 3500, qPrintable(QString::number(waited.elapsed())));
    QTRY_COMPARE(running, (QList<QVariantList>{{true}, {false}}));
}

QTEST_GUILESS_MAIN(TestLoopback)
#include "tst_loopback.moc"
