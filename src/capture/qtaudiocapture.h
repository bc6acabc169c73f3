#pragma once

#include "capture/audiocapture.h"
#include "capture/channelpick.h"
#include "capture/linearresampler.h"

#include <QAudio>
#include <QAudioDevice>
#include <QAudioFormat>
#include <QByteArray>
#include <QIODevice>
#include <QPointer>
#include <QScopedPointer>

#include <memory>

class QAudioSource;

/// Records an input device through QAudioSource in pull mode. A chosen device that is not there is replaced by the
/// default one. Gain and limiter are read from the settings for every chunk, so they change while recording. The
/// channels to record are read from the settings by start(), which fails if the device lacks them.
class QtAudioCapture : public AudioCapture {
    Q_OBJECT
public:
    /// \param deviceId QAudioDevice::id() of the device, empty for the system's default.
    explicit QtAudioCapture(const QByteArray& deviceId, QObject* parent = nullptr);
    ~QtAudioCapture() override;

    bool start(const PcmFormat& format) override;
    void stop() override;
    bool isRunning() const override { return m_source || m_reader; }
    QString description() const override;

    static QString openFailedText();
    static QString inputErrorText(QAudio::Error error);
    static QString lacksChannelsText(const ChannelPick& pick, const QString& device, int channels);

private Q_SLOTS:
    void onReadyRead();
    void onStateChanged();

private:
    bool startSource();
    bool startReader();
    void discardSource();
    void discardReader();

    QByteArray m_deviceId;
    QAudioDevice m_device;
    QAudioFormat m_format; ///< as negotiated with the device
    PcmFormat m_target; ///< as the consumer wants it
    ChannelPick m_pick; ///< as the settings asked for at the start
    // At most one of m_source and m_reader is set; both are null while stopped.
    std::unique_ptr<QAudioSource, QScopedPointerDeleteLater> m_source;
    std::unique_ptr<AudioCapture, QScopedPointerDeleteLater> m_reader; ///< for a pick that m_source cannot deliver
    QPointer<QIODevice> m_io;
    LinearResampler m_resampler;
};
