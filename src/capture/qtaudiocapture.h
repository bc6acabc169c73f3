#pragma once

#include "capture/audiocapture.h"
#include "capture/channelpick.h"

#include <QAudio>
#include <QByteArray>

/// Records an input device: through the multimedia framework's QAudioSource on Windows, through libpulse on Linux,
/// where the framework connects to the sound server once per process and loses it for good when that is restarted.
///
/// A chosen device that is not there is replaced by the default one. It is taken as soon as it is back, which a
/// warning() tells. A device that is removed while it is recorded is an error, and nothing else is recorded in its
/// place. Gain and limiter follow the settings while recording. The channels to record are read from the settings by
/// start(), which fails if the device lacks them.
class QtAudioCapture : public AudioCapture {
    Q_OBJECT
public:
    /// \param deviceId QAudioDevice::id() of the device, empty for the system's default.
    explicit QtAudioCapture(const QByteArray& deviceId, QObject* parent = nullptr);
    ~QtAudioCapture() override;

    /// On Linux it waits 0.3 seconds at most for the sound server: a failure that takes longer comes by errorOccurred()
    /// after it has returned true.
    bool start(const PcmFormat& format) override;
    void stop() override;
    /// Also after an error, until stop().
    bool isRunning() const override { return m_running; }
    QString description() const override;

    // What the readers tell the operator.
    static QString noDeviceText();
    static QString formatRefusedText(const QString& device);
    static QString openFailedText();
    static QString inputErrorText(QAudio::Error error);
    static QString lacksChannelsText(const ChannelPick& pick, const QString& device, int channels);
    static QString removedText(const QString& device);
    static QString returnedText(const QString& device);

private:
    /// The platform's reader. Its description is empty while it knows of no device.
    static AudioCapture* createReader(const QByteArray& deviceId, QObject* parent);

    AudioCapture* m_reader;
    bool m_running = false;
};
