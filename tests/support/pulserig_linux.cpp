#include "support/pulserig_linux.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <csignal>

namespace {

bool answers()
{
    QProcess pactl;
    pactl.start(QStringLiteral("pactl"), {QStringLiteral("info")});
    return pactl.waitForFinished() && pactl.exitCode() == 0;
}

/// \return the server's number of the module; empty when it could not be loaded.
QString loadModule(const QStringList& words)
{
    QProcess pactl;
    pactl.start(QStringLiteral("pactl"), QStringList{QStringLiteral("load-module")} + words);
    return pactl.waitForFinished() ? QString::fromLatin1(pactl.readAllStandardOutput().trimmed()) : QString();
}

bool unloadModule(const QString& number)
{
    return QProcess::execute(QStringLiteral("pactl"), {QStringLiteral("unload-module"), number}) == 0;
}

} // namespace

bool PulseRig::start()
{
    const QString socket = m_folder.filePath(QStringLiteral("pulse"));
    qputenv("PULSE_SERVER", "unix:" + socket.toUtf8());
    m_server = std::make_unique<QProcess>();
    m_server->setProcessChannelMode(QProcess::ForwardedChannels);
    m_server->start(QStringLiteral(QT_TESTCASE_SOURCEDIR "/support/pulseserver"), {m_folder.path()});
    QElapsedTimer waited;
    for (waited.start(); waited.elapsed() < 30'000 && !answers();)
        QThread::msleep(50);
    return answers();
}

void PulseRig::kill()
{
    m_server.reset();
}

void PulseRig::freeze(bool frozen)
{
    ::kill(pid_t(m_server->processId()), frozen ? SIGSTOP : SIGCONT);
}

void PulseRig::play(const QByteArray& pcm, const QString& device)
{
    play(pcm, {QStringLiteral("--device=") + device, QStringLiteral("--channels=2")});
}

bool PulseRig::addCard(int channels)
{
    m_cardChannels.clear();
    for (int i = 0; i < channels; ++i)
        m_cardChannels << QStringLiteral("aux%1").arg(i);
    const QString count = QStringLiteral("channels=%1").arg(channels);
    const QString map = QStringLiteral("channel_map=") + m_cardChannels.join(u',');
    const QStringList sink{QStringLiteral("module-null-sink"),
                           QStringLiteral("sink_name=multi"),
                           QStringLiteral("rate=44100"),
                           QStringLiteral("norewinds=1"),
                           count,
                           map};
    const QStringList source{QStringLiteral("module-remap-source"),
                             QStringLiteral("source_name=multi_in"),
                             QStringLiteral("master=multi.monitor"),
                             QStringLiteral("source_properties=device.description=Multi"),
                             QStringLiteral("remix=no"),
                             count,
                             map,
                             QStringLiteral("master_") + map};
    m_card = loadModule(sink);
    return !m_card.isEmpty() && !loadModule(source).isEmpty();
}

bool PulseRig::removeCard()
{
    return unloadModule(m_card);
}

bool PulseRig::addInput(const QString& name, const QString& description)
{
    m_input = loadModule({QStringLiteral("module-remap-source"), QStringLiteral("master=program2.monitor"),
                          QStringLiteral("source_name=") + name,
                          QStringLiteral("source_properties=device.description=") + description});
    return !m_input.isEmpty();
}

bool PulseRig::removeInput()
{
    return unloadModule(m_input);
}

void PulseRig::playIntoCard(const QByteArray& pcm)
{
    play(pcm, {QStringLiteral("--device=multi"), QStringLiteral("--channels=%1").arg(m_cardChannels.size()),
               QStringLiteral("--channel-map=") + m_cardChannels.join(u',')});
}

void PulseRig::play(const QByteArray& pcm, const QStringList& arguments)
{
    QFile file(m_folder.filePath(QStringLiteral("programme%1.raw").arg(m_players.size())));
    if (!file.open(QIODevice::WriteOnly) || file.write(pcm) != pcm.size())
        qFatal("cannot write the programme");
    file.close();
    auto player = std::make_unique<QProcess>();
    player->start(QStringLiteral("pacat"), QStringList{QStringLiteral("--raw"), QStringLiteral("--format=s16le"),
                                                       QStringLiteral("--rate=44100")} +
                                               arguments + QStringList{file.fileName()});
    m_players.push_back(std::move(player));
}
