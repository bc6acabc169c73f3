#pragma once

#include <QProcess>
#include <QString>
#include <QTemporaryDir>

#include <memory>
#include <vector>

/// The private sound server of the script "pulseserver". Set up before the QGuiApplication: the audio framework looks
/// for its server once.
class PulseRig {
public:
    /// Starts the server and points this process at it (PULSE_SERVER); false when that failed.
    bool start();
    /// Ends the server at once, as a crash would.
    void kill();
    qint64 processId() const { return m_server->processId(); }
    /// Plays interleaved S16LE at 44.1 kHz stereo into this device; "line_in" hears "program".
    void play(const QByteArray& pcm, const QString& device = QStringLiteral("program"));

private:
    QTemporaryDir m_folder;
    std::unique_ptr<QProcess> m_server; ///< killed when it is destroyed, as are the players
    std::vector<std::unique_ptr<QProcess>> m_players;
};
