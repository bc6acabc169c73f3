#pragma once

#include "capture/audiocapture.h"
#include "capture/linearresampler.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QByteArray>
#include <QIODevice>
#include <QPointer>
#include <QScopedPointer>

#include <memory>

class QAudioSource;

/// Records an input device through QAudioSource in pull mode. A chosen device that is not there is replaced by the
/// default one. Gain and limiter are read from the settings for every chunk, so they change while recording.
class QtAudioCapture : public AudioCapture {
    Q_OBJECT
public:
    /// \param deviceId QAudioDevice::id() of the device, empty for the system's default.
    explicit QtAudioCapture(const QByteArray& deviceId, QObject* parent = nullptr);
    ~QtAudioCapture() override;

    bool start(const PcmFormat& format) override;
    void stop() override;
    bool isRunning() const override { return m_source != nullptr; }
    QString description() const override;

private Q_SLOTS:
    void onReadyRead();
    void onStateChanged();

private:
    void discardSource();

    QByteArray m_deviceId;
    QAudioDevice m_device;
    QAudioFormat m_format; ///< as negotiated with the device
    PcmFormat m_target; ///< as the consumer wants it
    std::unique_ptr<QAudioSource, QScopedPointerDeleteLater> m_source; ///< null while stopped
    QPointer<QIODevice> m_io;
    LinearResampler m_resampler;
};
