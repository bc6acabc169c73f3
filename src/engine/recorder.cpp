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

#include <algorithm>
#include <numeric>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto TickInterval = 200ms;
/// Files that are being finished at once. Where the disk hangs, more of them would only take memory.
constexpr size_t ClosingAtMost = 3;
/// How long what a file did not take waits for the next file.
constexpr qint64 CarriedAtMostMs = 60'000;
constexpr qint64 CarriedAtMostBytes = 128 * 1024 * 1024;

qint64 bytesIn(const QList<QByteArray>& blocks)
{
    return std::accumulate(blocks.begin(), blocks.end(), qint64(0),
                           [](qint64 sum, const QByteArray& block) { return sum + block.size(); });
}

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
    for (Closing& file : m_closing) {
        if (file.record.filePath.isEmpty())
            continue; // reported already
        const bool hadFailed = !file.encoder->errorString().isEmpty();
        file.encoder->close();
        reportClosed(*file.encoder, file.record, hadFailed);
    }
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
    m_elapsed.start();
    m_hasHeard = false;
    m_worthRetrying = true;
    if (m_carriedFormat != m_format || m_carriedSince.hasExpired(CarriedAtMostMs))
        reportLost(bytesIn(std::exchange(m_carried, {})));

    if (!openSegment(m_environment.nowMs() - durationMs(bytesIn(m_carried))))
        return false;
    if (!startCapture()) {
        m_worthRetrying = m_capture->isWorthRetrying();
        discardSegment();
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

void Recorder::restartSource()
{
    if (m_recording && !startCapture())
        fail({}, Reason::CaptureError); // unless the source's error has stopped us
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
    m_serialBefore = settings.fileSerial;
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

/// \param takesLong although nothing waits for the file any more.
void Recorder::closeSegment(bool takesLong)
{
    if (!m_encoder)
        return;
    if ((takesLong || m_encoder->isBehind()) && m_closing.size() < ClosingAtMost) {
        closeLater();
        return;
    }
    const bool hadFailed = !m_encoder->errorString().isEmpty();
    m_encoder->close();
    RecordInfo record = m_current;
    record.durationMs = durationMs(m_fileFrames * m_format.frameBytes());
    const auto encoder = std::exchange(m_encoder, nullptr);
    if (m_archive)
        m_archive->setOpenFile({});
    reportClosed(*encoder, record, hadFailed);
    m_current = {};
}

/// \return how long that many bytes of PCM sound.
qint64 Recorder::durationMs(qint64 bytes) const
{
    return m_format.sampleRate > 0 ? bytes / m_format.frameBytes() * 1000 / m_format.sampleRate : 0;
}

/// Lets the encoder finish the file in its own time, while the next one is begun.
void Recorder::closeLater()
{
    if (!m_encoder) // a slot that heard of lost audio has stopped us
        return;
    m_current.durationMs = durationMs(m_fileFrames * m_format.frameBytes());
    m_closing.push_back({std::move(m_encoder), std::exchange(m_current, {})});
    if (m_archive)
        m_archive->setOpenFile({});
    const auto file = std::prev(m_closing.end());
    const bool hadFailed = !file->encoder->errorString().isEmpty();
    file->encoder->closeLater([this, file, hadFailed] {
        reportClosed(*file->encoder, std::exchange(file->record, {}), hadFailed);
        // It is the encoder that calls.
        QTimer::singleShot(0, this, [this, file] { m_closing.erase(file); });
    });
}

void Recorder::reportClosed(Encoder& encoder, RecordInfo record, bool hadFailed)
{
    const QString failure = hadFailed ? QString() : encoder.errorString();
    record.bytes = QFileInfo(record.filePath).size();
    record.inProgress = false;
    if (record.durationMs >= 1) {
        if (m_archive)
            m_archive->addRecord(record);
        Q_EMIT fileFinished(record);
        if (!failure.isEmpty())
            Q_EMIT errorOccurred(tr("%1 may be incomplete: %2").arg(record.fileName, failure));
    } else if (record.bytes == 0) {
        QFile::remove(record.filePath);
    }
}

/// After a start that came to nothing: no file with a header alone is left, and no gap in the numbers.
void Recorder::discardSegment()
{
    if (!m_encoder)
        return;
    m_encoder->close();
    m_encoder.reset();
    if (m_archive)
        m_archive->setOpenFile({});
    QFile::remove(m_current.filePath);
    AppSettings::instance().fileSerial = m_serialBefore;
    m_current = {};
}

/// A file that takes nothing any more is left to its encoder to finish, and what waits for it begins the next one.
void Recorder::replaceStuckEncoder()
{
    if (!m_encoder || !m_encoder->isStuck() || m_closing.size() >= ClosingAtMost)
        return;
    const QString name = m_current.fileName;
    takeQueued();
    closeLater();
    Q_EMIT errorOccurred(tr("%1 takes no more audio. The recording goes on in the next file.").arg(name));
    if (!m_recording) // a slot has stopped us
        return;
    if (!openSegment(m_environment.nowMs() - durationMs(bytesIn(m_carried))))
        fail({}, Reason::SplitFailed);
    else if (!writeCarried())
        fail(tr("Write failed: %1").arg(m_encoder->errorString()), Reason::WriteError);
}

/// What the file did not take does not count as being in it.
void Recorder::takeQueued()
{
    const QList<QByteArray> queued = m_encoder->takeQueued();
    m_fileFrames -= std::min(m_fileFrames, bytesIn(queued) / m_format.frameBytes());
    m_carried = queued + m_carried;
    carry({});
    qint64 lost = 0;
    for (qint64 left = bytesIn(m_carried); left > CarriedAtMostBytes; left = bytesIn(m_carried))
        lost += m_carried.takeFirst().size();
    reportLost(lost);
}

void Recorder::carry(const QList<QByteArray>& blocks)
{
    m_carried += blocks;
    m_carriedFormat = m_format;
    m_carriedSince.start();
}

void Recorder::reportLost(qint64 lost)
{
    if (lost > 0)
        Q_EMIT errorOccurred(
            tr("%n second(s) of audio are lost: no file took them.", nullptr, int(durationMs(lost) / 1000)));
}

bool Recorder::writeCarried()
{
    while (!m_carried.isEmpty()) {
        const QByteArray block = m_carried.takeFirst();
        m_fileFrames += block.size() / m_format.frameBytes();
        if (!m_encoder->write(block)) {
            takeQueued();
            return false;
        }
    }
    return true;
}

void Recorder::stop(const QString& reason)
{
    if (!m_recording)
        return;
    m_tick.stop();
    releaseCapture();
    // A run that failed with nothing in its file was a failed start, which only showed late.
    m_failed&& m_fileFrames == 0 ? discardSegment() : closeSegment();
    m_recording = false;
    if (!std::exchange(m_failed, false))
        m_carried.clear(); // what was recorded for one who has stopped it is not for the next one
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
    m_hasHeard = true;
    Q_EMIT audioReceived(pcmS16.size());
    m_levels->process(pcmS16);
    if (!m_recording) // a slot that heard of the block or of silence may have stopped us
        return;

    const qint64 nowMs = m_environment.nowMs();
    const bool splits = m_segmentEndMs && nowMs >= *m_segmentEndMs;
    const bool hangs = splits && m_encoder && !m_encoder->makesProgress();
    if (hangs)
        takeQueued(); // the next file may take it
    if (splits)
        closeSegment(hangs);
    if (!m_recording) // by a slot that heard of the file
        return;
    carry({pcmS16});
    if (splits && !openSegment(nowMs)) {
        fail({}, Reason::SplitFailed);
        return;
    }
    if (m_encoder && writeCarried())
        return;
    fail(tr("Write failed: %1").arg(m_encoder ? m_encoder->errorString() : tr("no encoder")), Reason::WriteError);
}

void Recorder::onCaptureError(const QString& message)
{
    m_worthRetrying = !m_capture || m_capture->isWorthRetrying();
    fail(message, Reason::CaptureError);
}

/// Reports an error and ends the run because of it.
void Recorder::fail(const QString& text, const char* reason)
{
    if (!text.isEmpty())
        Q_EMIT errorOccurred(text);
    m_failed = m_recording;
    stop(Reason::text(reason));
}

void Recorder::onTick()
{
    Q_EMIT elapsedChanged(elapsedMs());
    replaceStuckEncoder();
}
