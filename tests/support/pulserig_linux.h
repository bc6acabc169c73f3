#pragma once

#include <QProcess>
#include <QStringList>
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
    /// Adds a sound card whose channels have no places such as "front left": what is played into "multi",
    /// "multi_in" hears.
    bool addCard(int channels);
    bool removeCard();
    /// Plays interleaved S16LE at 44.1 kHz into that card.
    void playIntoCard(const QByteArray& pcm);

private:
    void play(const QByteArray& pcm, const QStringList& arguments);

    QStringList m_cardChannels;
    QString m_card; ///< the server's number of the module
    QTemporaryDir m_folder;
    std::unique_ptr<QProcess> m_server; ///< killed when it is destroyed, as are the players
    std::vector<std::unique_ptr<QProcess>> m_players;
};
