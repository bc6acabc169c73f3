#include "encode/ffmpegencoder.h"

#include "capture/ffmpeg.h"
#include "encode/durable.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr std::chrono::milliseconds StartTimeout = 5s;
constexpr std::chrono::milliseconds ProgressTimeout = 5s;
constexpr std::chrono::milliseconds FinishTimeout = 15s;
constexpr std::chrono::milliseconds TerminateTimeout = 3s;

int ms(std::chrono::milliseconds time)
{
    return int(time.count());
}

} // namespace

/// Why ffmpeg is not running any more. What it said itself, of a full disk for example, is on the error output.
QString FfmpegEncoder::reasonOfEnd(const QProcess& process)
{
    return process.exitStatus() == QProcess::NormalExit
               ? tr("ffmpeg ended early (exit code %1).").arg(process.exitCode())
               : process.errorString();
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
    m_process = std::make_unique<QProcess>();
    m_process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_process->start(ffmpegPath(), arguments(path, format), QIODevice::ReadWrite);
    if (!m_process->waitForStarted(ms(StartTimeout))) {
        m_errorString = tr("ffmpeg could not be started: %1").arg(m_process->errorString());
        m_process.reset();
        return false;
    }
    return true;
}

bool FfmpegEncoder::isOpen() const
{
    return m_process && m_process->state() != QProcess::NotRunning;
}

bool FfmpegEncoder::write(const QByteArray& pcmS16)
{
    if (!isOpen()) {
        if (m_process)
            m_errorString = reasonOfEnd(*m_process);
        return false;
    }
    if (!waitForRoom()) {
        m_errorString = isOpen() ? tr("ffmpeg does not keep up with the recording.") : reasonOfEnd(*m_process);
        return false;
    }
    const qint64 written = m_process->write(pcmS16);
    if (written < 0) {
        m_errorString = m_process->errorString();
        return false;
    }
    m_bytesWritten += written;
    return true;
}

/// Waits for as long as ffmpeg takes anything at all, which the hours of silence that make up for an outage need.
bool FfmpegEncoder::waitForRoom()
{
    while (m_process->bytesToWrite() > MaxWaitingBytes) {
        if (!m_process->waitForBytesWritten(ms(ProgressTimeout)))
            return false;
    }
    return true;
}

void FfmpegEncoder::close()
{
    if (m_process)
        finishProcess();
    const QFileInfo info(m_path);
    if (!info.isFile())
        return;
    m_bytesWritten = info.size();
    QFile file(m_path);
    // It may not open, since a virus scanner may be at it already. The system then writes it in its own time.
    if (file.open(QIODevice::ReadWrite | QIODevice::ExistingOnly) && !syncToDisk(file))
        noteFailure(qt_error_string());
}

/// Lets ffmpeg see the end of its input and write the rest, with less and less patience.
void FfmpegEncoder::finishProcess()
{
    bool inTime = true;
    if (isOpen()) {
        m_process->closeWriteChannel();
        inTime = m_process->waitForFinished(ms(FinishTimeout));
        if (!inTime) {
            m_process->terminate();
            if (!m_process->waitForFinished(ms(TerminateTimeout))) {
                m_process->kill();
                m_process->waitForFinished(ms(TerminateTimeout));
            }
        }
    }
    const bool succeeded = m_process->exitStatus() == QProcess::NormalExit && m_process->exitCode() == 0;
    if (!inTime)
        noteFailure(tr("ffmpeg did not finish the file in time."));
    else if (!succeeded)
        noteFailure(reasonOfEnd(*m_process));
    m_process.reset();
}
