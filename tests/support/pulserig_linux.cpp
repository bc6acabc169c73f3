#include "support/pulserig_linux.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

namespace {

bool answers()
{
    QProcess pactl;
    pactl.start(QStringLiteral("pactl"), {QStringLiteral("info")});
    return pactl.waitForFinished() && pactl.exitCode() == 0;
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

void PulseRig::play(const QByteArray& pcm, const QString& device)
{
    QFile file(m_folder.filePath(QStringLiteral("programme%1.raw").arg(m_players.size())));
    if (!file.open(QIODevice::WriteOnly) || file.write(pcm) != pcm.size())
        qFatal("cannot write the programme");
    file.close();
    auto player = std::make_unique<QProcess>();
    player->start(QStringLiteral("pacat"),
                  {QStringLiteral("--raw"), QStringLiteral("--device=") + device, QStringLiteral("--format=s16le"),
                   QStringLiteral("--rate=44100"), QStringLiteral("--channels=2"), file.fileName()});
    m_players.push_back(std::move(player));
}
