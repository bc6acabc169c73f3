#pragma once

#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

#include <memory>
#include <vector>

/// The private sound server of the script "pulseserver". Where the audio framework is to find it, start it before the
/// QGuiApplication: the framework looks for its server once.
class PulseRig {
public:
    /// Starts the server and points this process at it (PULSE_SERVER); false when that failed.
    bool start();
    /// Ends the server at once, as a crash would.
    void kill();
    /// Stops the server's process, as a hung machine would, or lets it go on.
    void freeze(bool frozen);
    /// Plays interleaved S16LE at 44.1 kHz stereo into this device; "line_in" hears "program".
    void play(const QByteArray& pcm, const QString& device = QStringLiteral("program"));
    /// Adds a sound card whose channels have no places such as "front left": what is played into "multi",
    /// "multi_in" hears.
    bool addCard(int channels);
    /// Adds an input device that hears what "program2" plays.
    bool addInput(const QString& name, const QString& description);
    bool removeInput();
    bool removeCard();
    /// Plays interleaved S16LE at 44.1 kHz into that card.
    void playIntoCard(const QByteArray& pcm);

private:
    void play(const QByteArray& pcm, const QStringList& arguments);

    QStringList m_cardChannels;
    // The server's numbers of the modules.
    QString m_card;
    QString m_input;
    QTemporaryDir m_folder;
    std::unique_ptr<QProcess> m_server; ///< killed when it is destroyed, as are the players
    std::vector<std::unique_ptr<QProcess>> m_players;
};
