#include "capture/qtaudiocapture.h"
#include "settings/appsettings.h"
#include "support/pulserig_linux.h"
#include "support/samples.h"
#include "support/table.h"

#include <QSignalSpy>

#include <algorithm>
#include <vector>

namespace {

constexpr int CardChannels = 16;
constexpr int Frames = 3 * 44100;

/// Tells the frame and the channel (from 1), below the limiter's knee. Twice the channel, so that the mean of a pair is
/// a number that no single channel has.
qint16 sampleOf(int frame, int channel)
{
    return qint16(frame % 699 * 40 + 2 * channel);
}

/// All frames, from the second on, of a recording whose sides are these; 0 stands for the mean of channels 15 and 16.
QByteArray programme(const QList<int>& sides)
{
    Samples samples;
    for (int frame = 1; frame < Frames; ++frame) {
        for (const int channel : sides)
            samples << (channel == 0 ? qint16(sampleOf(frame, 15) + 1) : sampleOf(frame, channel));
    }
    return bytesOf(samples);
}

/// A capture of some channels at work.
struct Listener : QObject {
    Listener(const ChannelPick& pick, int channels, const QByteArray& device = "multi_in") : capture(device)
    {
        AppSettings::instance().firstChannel = pick.first;
        AppSettings::instance().channelCount = pick.count;
        connect(&capture, &AudioCapture::dataReady, this, [this](const QByteArray& pcm) { heard += pcm; });
        started = capture.start({44100, channels});
    }
    QtAudioCapture capture;
    QSignalSpy errors{&capture, &AudioCapture::errorOccurred};
    QSignalSpy running{&capture, &AudioCapture::runningChanged};
    QSignalSpy overloads{&capture, &AudioCapture::overloadDetected};
    QByteArray heard;
    bool started = false;
};

} // namespace

/// A sound card with many inputs that carries several programmes.
class TestMultichannel : public QObject {
    Q_OBJECT

    using LacksChannelsRows = Table<ChannelPick, QByteArray, QString>;

private Q_SLOTS:
    void initTestCase() { QVERIFY(m_rig.start() && m_rig.addCard(CardChannels)); }

    void eachGetsItsOwn()
    {
        struct Wanted {
            ChannelPick pick;
            QList<int> sides;
        };
        QList<Wanted> list{{{15, 2}, {0}}, {{5, 1}, {5, 5}}, {{16, 1}, {16}}};
        for (int first = 1; first < CardChannels; first += 2)
            list.append(Wanted{{first, 2}, {first, first + 1}});
        std::vector<std::unique_ptr<Listener>> listeners;
        for (const Wanted& wanted : list) {
            listeners.push_back(std::make_unique<Listener>(wanted.pick, int(wanted.sides.size())));
            QVERIFY(listeners.back()->started);
        }
        QTRY_VERIFY(std::all_of(listeners.begin(), listeners.end(), [](auto& l) { return !l->heard.isEmpty(); }));
        Samples played;
        for (int frame = 0; frame < Frames; ++frame) {
            for (int channel = 1; channel <= CardChannels; ++channel)
                played << sampleOf(frame, channel);
        }
        m_rig.playIntoCard(bytesOf(played));
        for (int i = 0; i < list.size(); ++i) {
            const QByteArray expected = programme(list[i].sides);
            QTRY_VERIFY2_WITH_TIMEOUT(listeners[size_t(i)]->heard.contains(expected),
                                      qPrintable(list[i].pick.numbers()), 15'000);
            QCOMPARE(listeners[size_t(i)]->errors.size(), 0);
        }
    }

    void gainFollowsTheSettings()
    {
        Listener listener({7, 2}, 2);
        m_rig.playIntoCard(QByteArray(CardChannels * 2 * 44100 * 3, '\x10')); // 4112, 18 dB below full scale
        const QByteArray plain(1000, '\x10');
        QTRY_VERIFY(listener.heard.contains(plain));
        QVERIFY(listener.overloads.isEmpty());
        AppSettings::instance().inputGainDb = 24.0;
        QTRY_VERIFY(!listener.overloads.isEmpty());
        AppSettings::instance().inputGainDb = 0.0;
        listener.heard.clear();
        QTRY_VERIFY(listener.heard.contains(plain));
    }

    void lacksChannels_data()
    {
        const LacksChannelsRows row;
        row("a pair", {15, 2}, "line_in", "Channels 15 + 16 were asked for, but the device LineIn has only 2.");
        row("the second of a pair", {16, 2}, "multi_in",
            "Channels 16 + 17 were asked for, but the device Multi has only 16.");
        row("a single channel", {3, 1}, "line_in", "Channel 3 was asked for, but the device LineIn has only 2.");
    }
    void lacksChannels()
    {
        const auto [pick, device, text] = LacksChannelsRows::fetch();
        AppSettings::instance().firstChannel = pick.first;
        AppSettings::instance().channelCount = pick.count;
        QtAudioCapture capture(device);
        QSignalSpy errors(&capture, &AudioCapture::errorOccurred);
        QSignalSpy running(&capture, &AudioCapture::runningChanged);
        QVERIFY(!capture.start({44100, 2}));
        QVERIFY(!capture.isRunning());
        QCOMPARE(errors, (QList<QVariantList>{{text}}));
        QCOMPARE(running.size(), 0);
    }

    void stopsAndStarts()
    {
        Listener listener({3, 2}, 1);
        QTRY_VERIFY(!listener.heard.isEmpty());
        QCOMPARE(listener.capture.description(), "Multi");
        listener.capture.stop();
        listener.capture.stop();
        QVERIFY(!listener.capture.isRunning());
        QCOMPARE(listener.running, (QList<QVariantList>{{true}, {false}}));
        listener.heard.clear();
        QVERIFY(listener.capture.start({44100, 1}));
        QTRY_VERIFY(!listener.heard.isEmpty());
        QCOMPARE(listener.errors.size(), 0);
    }

    // Not silently something else, as the sound server would have it.
    void tellsThatTheDeviceIsGone()
    {
        Listener listener({3, 2}, 2);
        QTRY_VERIFY(!listener.heard.isEmpty());
        QVERIFY(m_rig.removeCard());
        QTRY_COMPARE(listener.errors, (QList<QVariantList>{{"The audio input device Multi was removed."}}));
        QVERIFY(listener.capture.isRunning());
        listener.capture.stop();
        QCOMPARE(listener.running.last(), QVariantList{false});
    }

    void tellsThatTheServerIsGone()
    {
        Listener listener({1, 1}, 2, "line_in2");
        QTRY_VERIFY(!listener.heard.isEmpty());
        m_rig.kill();
        QTRY_COMPARE(listener.errors, (QList<QVariantList>{{"Audio input error (code 4)."}}));
    }

private:
    PulseRig m_rig;
};

QTEST_GUILESS_MAIN(TestMultichannel)
#include "tst_multichannel_linux.moc"
