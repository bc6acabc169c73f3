#include "ui/capturediagnostics.h"

#include "engine/recorder.h"
#include "settings/appsettings.h"
#include "ui/plainmessage.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTimer>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto Duration = 10s;

QString oneDecimal(double value)
{
    return QString::number(value, 'f', 1);
}

double ratio(double part, double whole)
{
    return whole > 0.0 ? part / whole : 0.0;
}

} // namespace

void CaptureDiagnostics::Arrivals::add(qint64 atMs)
{
    ++count;
    if (lastMs >= 0)
        largestGapMs = std::max(largestGapMs, atMs - lastMs);
    lastMs = atMs;
}

CaptureDiagnostics::CaptureDiagnostics(Recorder* recorder, QObject* parent) : QObject(parent), m_recorder(recorder)
{
    connect(recorder, &Recorder::audioReceived, this, &CaptureDiagnostics::addBuffer);
    connect(recorder, &Recorder::channelLevels, this, &CaptureDiagnostics::addLevels);
}

void CaptureDiagnostics::run(QWidget* window)
{
    if (m_running)
        return;
    if (!m_recorder->isRecording()) {
        PlainMessage::show(
            window, QMessageBox::Information, tr("Capture Diagnostics"),
            tr("Start recording first - diagnostics measure the live capture path, which only runs while "
               "recording."));
        return;
    }
    m_measured = {};
    m_measured.source = m_recorder->sourceDescription(); // now, while it records
    m_running = true;
    m_clock.start();
    QTimer::singleShot(Duration, this, &CaptureDiagnostics::finish);
}

void CaptureDiagnostics::addBuffer(qint64 bytes)
{
    if (!m_running)
        return;
    m_measured.buffers.add(m_clock.elapsed());
    m_measured.bytes += bytes;
}

void CaptureDiagnostics::addLevels(double leftPeakDb, double rightPeakDb)
{
    if (!m_running)
        return;
    m_measured.meters.add(m_clock.elapsed());
    m_measured.lowestDb = std::min({m_measured.lowestDb, leftPeakDb, rightPeakDb});
    m_measured.highestDb = std::max({m_measured.highestDb, leftPeakDb, rightPeakDb});
}

void CaptureDiagnostics::finish()
{
    m_running = false;
    const AppSettings& settings = AppSettings::instance();
    m_measured.sampleRate = settings.sampleRate;
    m_measured.channels = settings.channels;
    m_measured.elapsedMs = m_clock.elapsed();
    const QStringList lines = report(m_measured);
    for (const QString& line : lines)
        Q_EMIT logMessage(line);
    QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
    Q_EMIT finished();
}

QStringList CaptureDiagnostics::report(const Measurement& measured)
{
    const double seconds = double(measured.elapsedMs) / 1000.0;
    const double bytesPerSecond = 2.0 * measured.sampleRate * measured.channels;
    const double averageBytes = ratio(double(measured.bytes), double(measured.buffers.count));

    QStringList lines{tr("--- Capture diagnostics ---")};
    lines << tr("Source: %1").arg(measured.source);
    lines << tr("Format: %1 Hz, %2 channel(s)").arg(measured.sampleRate).arg(measured.channels);
    lines << tr("Audio buffers: %1 in %2 s (avg %3 bytes = %4 ms), largest gap %5 ms")
                 .arg(measured.buffers.count)
                 .arg(oneDecimal(seconds), oneDecimal(averageBytes),
                      oneDecimal(1000.0 * ratio(averageBytes, bytesPerSecond)))
                 .arg(measured.buffers.largestGapMs);
    lines << tr("Audio received: %1 %% of real time")
                 .arg(oneDecimal(100.0 * ratio(double(measured.bytes), bytesPerSecond * seconds)));
    lines << tr("Meter updates: %1 (%2 per second), largest gap %3 ms")
                 .arg(measured.meters.count)
                 .arg(oneDecimal(ratio(double(measured.meters.count), seconds)))
                 .arg(measured.meters.largestGapMs);
    lines << (measured.meters.count > 0
                  ? tr("Level range: %1 to %2 dBFS").arg(oneDecimal(measured.lowestDb), oneDecimal(measured.highestDb))
                  : tr("Level range: no updates received"));
    lines << tr("--- end ---");
    return lines;
}
