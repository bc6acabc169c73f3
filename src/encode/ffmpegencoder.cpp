#include "encode/ffmpegencoder.h"

#include "encode/durable.h"
#include "process/ffmpeg.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr ChildProcess::Patience FinishPatience{15s, 3s, 3s};
/// Encoded in well under a second.
constexpr qint64 QuicklyTakenBytes = 8 * 1024 * 1024;

} // namespace

/// What ffmpeg said itself, of a full disk for example, is on the error output.
QString FfmpegEncoder::reasonOfEnd() const
{
    return m_process->reasonOfEnd(tr("ffmpeg ended early (exit code %1)."));
}

FfmpegEncoder::FfmpegEncoder(const QString& codecName, const QString& formatName, int bitrate)
    : m_codecName(codecName), m_formatName(formatName), m_bitrate(bitrate)
{
}

FfmpegEncoder::~FfmpegEncoder()
{
    if (m_process)
        FfmpegEncoder::close();
}

QStringList FfmpegEncoder::arguments(const QString& path, const PcmFormat& format) const
{
    QStringList list{QStringLiteral("-hide_banner"), QStringLiteral("-loglevel"), QStringLiteral("error"),
                     QStringLiteral("-y")};
    list << QStringLiteral("-f") << QStringLiteral("s16le");
    list << QStringLiteral("-ar") << QString::number(format.sampleRate);
    list << QStringLiteral("-ac") << QString::number(format.channels);
    list << QStringLiteral("-i") << QStringLiteral("pipe:0");
    list << QStringLiteral("-c:a") << m_codecName;
    if (m_bitrate > 0 && m_codecName != QLatin1String("flac"))
        list << QStringLiteral("-b:a") << QString::number(m_bitrate) + u'k';
    list << QStringLiteral("-f") << m_formatName << QDir::toNativeSeparators(path);
    return list;
}

bool FfmpegEncoder::open(const QString& path, const PcmFormat& format)
{
    close();
    m_errorString.clear();
    m_path = path;
    m_bytesWritten = 0;
    if (!ffmpegAvailable()) {
        m_errorString = tr("ffmpeg was not found on this system.");
        return false;
    }
    m_process = std::make_unique<ChildProcess>();
    if (!m_process->launch(ffmpegPath(), arguments(path, format))) {
        m_errorString = tr("ffmpeg could not be started: %1").arg(m_process->errorString());
        m_process.reset();
        return false;
    }
    return true;
}

bool FfmpegEncoder::isOpen() const
{
    return m_process && m_process->isRunning();
}

bool FfmpegEncoder::write(const QByteArray& pcmS16)
{
    if (!m_process)
        return false;
    const bool keepsUp = m_process->behind() < BehindAtMost;
    if (!keepsUp || !m_process->feed(pcmS16)) {
        m_errorString = keepsUp ? reasonOfEnd() : tr("ffmpeg does not keep up with the recording.");
        m_refused = {pcmS16};
        return false;
    }
    m_bytesWritten += pcmS16.size();
    return true;
}

bool FfmpegEncoder::isStuck() const
{
    return isOpen() && m_process->withoutProgress() >= StuckAfter;
}

bool FfmpegEncoder::makesProgress() const
{
    return !isOpen() || m_process->withoutProgress() <= 1s;
}

bool FfmpegEncoder::isBehind() const
{
    return isOpen() && (m_process->waitingBytes() > QuicklyTakenBytes || !makesProgress() || !m_errorString.isEmpty());
}

QList<QByteArray> FfmpegEncoder::takeQueued()
{
    return (m_process ? m_process->takeWaiting() : QList<QByteArray>()) + Encoder::takeQueued();
}

void FfmpegEncoder::close()
{
    if (m_process) {
        noteEnd(m_process->end(FinishPatience));
        m_process.reset();
    }
    syncFile();
}

void FfmpegEncoder::closeLater(const std::function<void()>& closed)
{
    m_process->endLater(FinishPatience, [this, closed](bool inTime) {
        noteEnd(inTime);
        m_process.release()->reap(); // it is the child that calls
        if (inTime) // else it may be the disk that hangs
            syncFile();
        closed();
    });
}

/// Called after ffmpeg saw the end of its input and wrote the rest, or was made to end.
void FfmpegEncoder::noteEnd(bool inTime)
{
    const bool succeeded = m_process->exitStatus() == QProcess::NormalExit && m_process->exitCode() == 0;
    if (!inTime)
        noteFailure(tr("ffmpeg did not finish the file in time."));
    else if (!succeeded)
        noteFailure(reasonOfEnd());
}

void FfmpegEncoder::syncFile()
{
    const QFileInfo info(m_path);
    if (!info.isFile())
        return;
    m_bytesWritten = info.size();
    QFile file(m_path);
    // It may not open, since a virus scanner may be at it already. The system then writes it in its own time.
    if (file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) && !syncToDisk(file))
        noteFailure(qt_error_string());
}
