#include "station/devicelisting.h"

#include "capture/capturefactory.h"
#include "support/pulserig_linux.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>

/// The devices of a real sound server, listed by a program without a display.
class TestDeviceListingLinux : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void current()
    {
        const DeviceList list = DeviceList::current();
        QStringList inputs;
        for (const InputDevice& device : list.inputs)
            inputs << QStringLiteral("%1 %2 %3").arg(device.id, device.label, QString::number(device.channels));
        inputs.sort();
        QCOMPARE(inputs, (QStringList{"line_in LineIn 2", "line_in2 LineIn2 2", "multi_in Multi 16"}));

        const QString text = DeviceListing::current();
        for (const char* lines : {"  LineIn2 (channels: 2)\n    capture/backend=1 capture/deviceId=line_in2\n",
                                  "  Multi (channels: 16)\n    capture/backend=1 capture/deviceId=multi_in\n",
                                  "  Program2\n    capture/backend=0 capture/playbackId=program2\n"})
            QVERIFY2(text.contains(lines), qPrintable(text));
    }

    // The one that QtAudioCapture is given must be the one that was listed.
    void namesTheDevicesAsTheSettingsDo()
    {
        QList<QByteArray> ids;
        for (const QAudioDevice& device : inputDevices())
            ids << device.id();
        QList<QByteArray> listed;
        for (const InputDevice& device : DeviceList::current().inputs)
            listed << device.id;
        std::sort(ids.begin(), ids.end());
        std::sort(listed.begin(), listed.end());
        QCOMPARE(listed, ids);
    }

    void doesNotWaitForAServerThatHangs()
    {
        rig->freeze(true);
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(DeviceList::current().inputs.size(), 0);
        QVERIFY(clock.elapsed() < 2000 + 1000);
        rig->kill();
        clock.start();
        QCOMPARE(DeviceList::current().playback.size(), 0);
        QVERIFY(clock.elapsed() < 1000); // refused is an answer
    }

public:
    static inline PulseRig* rig = nullptr;
};

int main(int argc, char* argv[])
{
    PulseRig rig;
    if (!rig.start() || !rig.addCard(16))
        qFatal("The private sound server did not start.");
    qunsetenv("QT_QPA_PLATFORM");
    qunsetenv("DISPLAY");
    QCoreApplication app(argc, argv);
    TestDeviceListingLinux::rig = &rig;
    TestDeviceListingLinux test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_devicelisting_linux.moc"
