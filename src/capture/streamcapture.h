#pragma once

#include "capture/audiocapture.h"
#include "capture/pcmformat.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <chrono>

class QProcess;

/// Records an internet stream through an ffmpeg child that decodes it to raw PCM. A stream that stalls or ends is
/// connected to again and again, and the time lost is made up by silence, so that recordings keep step with the clock.
///
/// Lost time is counted from the last data to the next attempt. Not counted is how long that attempt then takes until
/// it delivers, what the server sends of the past when one joins, and the 11 s that ffmpeg spends on attempts of its
/// own when it gives them up with a few last samples. User-interface thread only.
class StreamCapture : public AudioCapture {
    Q_OBJECT
public:
    explicit StreamCapture(QObject* parent = nullptr);
    ~StreamCapture() override;

    bool start(const PcmFormat& format) override;
    /// Within about 3 seconds. A stop while no decoder runs, between two attempts, is not told by runningChanged().
    void stop() override;
    bool isRunning() const override;
    /// Host and path of the stream, without a user name and password; the address as it stands when it has no host.
    QString description() const override;

    /// Before the next attempt, after that many without data.
    static std::chrono::seconds reconnectDelay(int attempt);
    /// What ffmpeg is started with.
    static QStringList arguments(const QString& url, const PcmFormat& format, bool reconnect);

private Q_SLOTS:
    void onReadyRead();
    void onProcessFinished();
    void onWatchdog();
    void attemptReconnect();

private:
    bool launch(QString* failure);
    void discardProcess();
    void replaceProcess(const QString& reason);
    void scheduleReconnect();
    void addLostTime();
    void fillWithSilence();

    PcmFormat m_format;
    QString m_url;
    QPointer<QProcess> m_process;
    QTimer m_watchdog;
    QTimer m_reconnectTimer;
    QElapsedTimer m_lastData; ///< since data came, or since the time without any was last counted
    qint64 m_missingMs = 0; ///< lost, and not yet made up by silence
    int m_attempt = 0; ///< since data last came
    bool m_stopping = true;
    bool m_connected = false; ///< the current process has delivered
};
