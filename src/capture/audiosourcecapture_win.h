#pragma once

#include "capture/audiocapture.h"
#include "capture/channelpick.h"
#include "capture/linearresampler.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QByteArray>
#include <QIODevice>
#include <QMediaDevices>
#include <QPointer>
#include <QScopedPointer>
#include <QTimer>

#include <memory>

class QAudioSource;

/// Records an input device through QAudioSource in pull mode, with the texts of QtAudioCapture. Gain and limiter are
/// read from the settings for every chunk.
class AudioSourceCapture : public AudioCapture {
    Q_OBJECT
public:
    /// \param deviceId QAudioDevice::id() of the device, empty for the system's default.
    AudioSourceCapture(const QByteArray& deviceId, QObject* parent);
    ~AudioSourceCapture() override;

    bool start(const PcmFormat& format) override;
    void stop() override;
    bool isRunning() const override { return m_source != nullptr; }
    /// Empty until a device was looked for, and when there is none.
    QString description() const override { return m_device.description(); }

private Q_SLOTS:
    void onReadyRead();
    void onStateChanged();
    void onInputsChanged();

private:
    QString open(const QAudioDevice& device);
    void discardSource();

    QByteArray m_deviceId;
    QMediaDevices m_devices;
    QAudioDevice m_device;
    QAudioFormat m_format; ///< as negotiated with the device
    PcmFormat m_target; ///< as the consumer wants it
    ChannelPick m_pick; ///< as the settings asked for at the start
    std::unique_ptr<QAudioSource, QScopedPointerDeleteLater> m_source; ///< null while stopped
    QPointer<QIODevice> m_io;
    LinearResampler m_resampler;
    QTimer m_reopen; ///< runs when the chosen device is back but could not be opened
};
