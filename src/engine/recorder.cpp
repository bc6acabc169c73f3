#include "engine/recorder.h"

#include "archive/archiveindex.h"
#include "capture/audiocapture.h"
#include "capture/capturefactory.h"
#include "encode/encoder.h"
#include "encode/encoderfactory.h"
#include "engine/filenametemplate.h"
#include "engine/levelanalyzer.h"
#include "engine/reasons.h"
#include "engine/segment.h"
#include "settings/appsettings.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace std::chrono_literals;

namespace {

constexpr auto TickInterval = 200ms;

/// A reason as the log shows it.
QString translated(const QString& reason)
{
    return QCoreApplication::translate("Recorder", reason.toUtf8().constData());
}

} // namespace

Recorder::Environment Recorder::Environment::real()
{
    return {QDateTime::currentMSecsSinceEpoch, [] { return ::createCapture(nullptr); }};
}

Recorder::Recorder(ArchiveIndex* archive, QObject* parent, Environment environment)
    : QObject(parent), m_archive(archive), m_environment(std::move(environment)), m_levels(new LevelAnalyzer(this))
{
    connect(m_levels, &LevelAnalyzer::levelChanged, this, &Recorder::levelChanged);
    connect(m_levels, &LevelAnalyzer::channelLevels, this, &Recorder::channelLevels);
    connect(m_levels, &LevelAnalyzer::silenceDetected, this, &Recorder::silenceDetected);
    connect(m_levels, &LevelAnalyzer::audioRestored, this, &Recorder::audioRestored);
    m_tick.setInterval(TickInterval);
    connect(&m_tick, &QTimer::timeout, this, &Recorder::onTick);
}

Recorder::~Recorder()
{
    stop(Reason::text(Reason::Shutdown));
}

qint64 Recorder::elapsedMs() const
{
    return m_recording && m_elapsed.isValid() ? m_elapsed.elapsed() : 0;
}

QString Recorder::sourceDescription() const
{
    return m_capture ? m_capture->description() : QString();
}

QString Recorder::baseName(const QDateTime& start) const
{
    const AppSettings& settings = AppSettings::instance();
    return FileNameTemplate::expand(settings.fileTemplate, start, settings.fileSerial);
}

QString Recorder::previewFileName(const QDateTime& start) const
{
    return baseName(start) + u'.' + codecExtension(AppSettings::instance().codec);
}

bool Recorder::start(const QString& reason)
{
    if (m_recording)
        return true;
    const AppSettings& settings = AppSettings::instance();
    m_format = {settings.sampleRate, settings.channels};
    if (const QString refusal = m_environment.refusal ? m_environment.refusal() : QString(); !refusal.isEmpty()) {
        Q_EMIT errorOccurred(refusal);
        return false;
    }
    if (!QDir().mkpath(settings.outputFolder)) {
        Q_EMIT errorOccurred(tr("Cannot create the output folder: %1").arg(settings.outputFolder));
        return false;
    }
    m_levels->configure(m_format);
    m_levels->setSilence(settings.silenceThresholdDb, settings.silenceSeconds);
    const qint64 nowMs = m_environment.nowMs();
    m_elapsed.start();

    if (!openSegment(nowMs))
        return false;
    if (!startCapture()) {
        closeSegment();
        releaseCapture();
        return false;
    }
    m_recording = true;
    m_tick.start();
    Q_EMIT recordingChanged(true);
    if (!m_recording) // a slot has stopped us
        return false;
    Q_EMIT logMessage(reason.isEmpty() ? tr("Recording started")
                                       : tr("Recording started (%1)").arg(translated(reason)));
    Q_EMIT started(reason);
    return true;
}

bool Recorder::startCapture()
{
    releaseCapture();
    m_capture = m_environment.createCapture();
    connect(m_capture, &AudioCapture::dataReady, this, &Recorder::onData);
    connect(m_capture, &AudioCapture::errorOccurred, this, &Recorder::onCaptureError);
    connect(m_capture, &AudioCapture::overloadDetected, this, &Recorder::overloadDetected);
    connect(m_capture, &AudioCapture::warning, this, &Recorder::logMessage);
    connect(m_capture, &AudioCapture::timeMadeUp, this, &Recorder::timeMadeUp);
    // A source that ends without a word would leave a recorder that records nothing, and that nobody starts again.
    connect(m_capture, &AudioCapture::runningChanged, this, [this](bool running) {
        if (!running && m_recording)
            onCaptureError(tr("The audio source has ended by itself."));
    });
    return m_capture->start(m_format);
}

/// Stops the source and lets go of it. It may be the source's own signal that leads here, so it dies a little later;
/// cut off at once, it emits nothing after this.
void Recorder::releaseCapture()
{
    if (!m_capture)
        return;
    m_capture->disconnect(this);
    m_capture->stop();
    m_capture->setParent(this);
    m_capture->deleteLater();
    m_capture = nullptr;
}

bool Recorder::openSegment(qint64 nowMs)
{
    const QDateTime start = QDateTime::fromMSecsSinceEpoch(nowMs);
    AppSettings& settings = AppSettings::instance();
    m_encoder = createEncoder({settings.codec, settings.bitrate, settings.vorbisQuality});
    const QString path = freePath(start);
    if (!m_encoder->open(path, m_format)) {
        Q_EMIT errorOccurred(tr("Cannot start encoding: %1").arg(m_encoder->errorString()));
        m_encoder.reset();
        return false;
    }
    m_current = {};
    m_current.filePath = path;
    m_current.fileName = QFileInfo(path).fileName();
    m_current.start = start;
    m_current.inProgress = true;
    m_fileFrames = 0;
    if (m_archive)
        m_archive->setOpenFile(m_current.fileName);
    const QDateTime end = Segment::end(start, settings.splitMinutes, settings.alignToClock);
    m_segmentEndMs = end.isValid() ? std::optional(end.toMSecsSinceEpoch()) : std::nullopt;
    // In memory only: the next save of the settings takes it to the store.
    settings.fileSerial = settings.fileSerial % 9999 + 1;

    Q_EMIT fileStarted(path);
    if (end.isValid()) {
        const QString format = QStringLiteral("HH:mm");
        Q_EMIT logMessage(tr("Recording %1 - %2").arg(start.toString(format), end.toString(format)));
    }
    return true;
}

/// The path for a file that starts then; numbered when there is such a file already.
QString Recorder::freePath(const QDateTime& start) const
{
    const AppSettings& settings = AppSettings::instance();
    const QDir folder(settings.outputFolder);
    const QString base = baseName(start);
    const QString extension = codecExtension(settings.codec);
    QString path = folder.absoluteFilePath(base + u'.' + extension);
    for (int counter = 1; QFileInfo::exists(path); ++counter) {
        path = folder.absoluteFilePath(
            QStringLiteral("%1_%2.%3")
                .arg(base, QStringLiteral("%1").arg(counter, 2, 10, QLatin1Char('0')), extension));
    }
    return path;
}

void Recorder::closeSegment()
{
    if (!m_encoder)
        return;
    const bool hadFailed = !m_encoder->errorString().isEmpty();
    m_encoder->close();
    const QString failure = hadFailed ? QString() : m_encoder->errorString();
    RecordInfo record = m_current;
    record.durationMs = m_format.sampleRate > 0 ? m_fileFrames * 1000 / m_format.sampleRate : 0;
    record.bytes = QFileInfo(record.filePath).size();
    record.inProgress = false;
    m_encoder.reset();
    if (m_archive)
        m_archive->setOpenFile({});

    if (record.durationMs >= 1) {
        if (m_archive)
            m_archive->addRecord(record);
        Q_EMIT fileFinished(record);
        if (!failure.isEmpty())
            Q_EMIT errorOccurred(tr("%1 may be incomplete: %2").arg(record.fileName, failure));
    } else if (record.bytes == 0) {
        QFile::remove(record.filePath);
    }
    m_current = {};
}

void Recorder::stop(const QString& reason)
{
    if (!m_recording)
        return;
    m_tick.stop();
    releaseCapture();
    closeSegment();
    m_recording = false;
    Q_EMIT recordingChanged(false);
    Q_EMIT elapsedChanged(0);
    Q_EMIT levelChanged(LevelAnalyzer::FloorDb, LevelAnalyzer::FloorDb);
    Q_EMIT logMessage(reason.isEmpty() ? tr("Recording stopped")
                                       : tr("Recording stopped (%1)").arg(translated(reason)));
    Q_EMIT stopped(reason);
}

void Recorder::onData(const QByteArray& pcmS16)
{
    if (!m_recording || pcmS16.isEmpty())
        return;
    Q_EMIT audioReceived(pcmS16.size());
    m_levels->process(pcmS16);
    if (!m_recording) // a slot that heard of the block or of silence may have stopped us
        return;

    const qint64 nowMs = m_environment.nowMs();
    if (m_segmentEndMs && nowMs >= *m_segmentEndMs) {
        closeSegment();
        if (!openSegment(nowMs)) {
            stop(Reason::text(Reason::SplitFailed));
            return;
        }
    }
    if (m_encoder && m_encoder->write(pcmS16)) {
        m_fileFrames += pcmS16.size() / m_format.frameBytes();
        return;
    }
    Q_EMIT errorOccurred(tr("Write failed: %1").arg(m_encoder ? m_encoder->errorString() : tr("no encoder")));
    stop(Reason::text(Reason::WriteError));
}

void Recorder::onCaptureError(const QString& message)
{
    Q_EMIT errorOccurred(message);
    stop(Reason::text(Reason::CaptureError));
}

void Recorder::onTick()
{
    Q_EMIT elapsedChanged(elapsedMs());
}
