#pragma once

#include "capture/audiocapture.h"
#include "capture/pcmformat.h"

#include <QElapsedTimer>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <chrono>

class ChildProcess;

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
    /// Takes about 3 seconds at most. Between two attempts, while no decoder runs, it does not emit runningChanged().
    void stop() override;
    bool isRunning() const override;
    /// Host and path of the stream, without user name and password; an address without a host is given as it stands.
    QString description() const override;
    /// false after an error that lies in the settings or the installation: the address, a missing ffmpeg, or that
    /// reconnection is disabled.
    bool isWorthRetrying() const override { return m_worthRetrying; }

    /// How long to wait before the next attempt when this many in a row have brought no data.
    static std::chrono::seconds reconnectDelay(int attempt);
    /// The arguments that ffmpeg is started with.
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
    QPointer<ChildProcess> m_process;
    QTimer m_watchdog;
    QTimer m_reconnectTimer;
    QElapsedTimer m_lastData; ///< since data came, or since the time without any was last counted
    qint64 m_missingMs = 0; ///< lost time that silence has not made up for yet
    int m_attempt = 0; ///< attempts since data last came
    bool m_stopping = true;
    bool m_connected = false; ///< the current process has delivered
    bool m_worthRetrying = true;
};
