#include "station/archivecopy.h"

#include "archive/archiveindex.h"
#include "settings/appsettings.h"
#include "settings/channel.h"

#include <QDir>
#include <QFile>
#include <QSysInfo>

#include <algorithm>
#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto SettleTime = 5s;
constexpr auto RetryInterval = 60s;
/// A slow share and a sync of some megabytes at idle priority take long, too.
constexpr auto Patience = 60s;
constexpr qint64 LookEveryMs = 3600 * 1000;
constexpr qint64 DeleteEveryMs = 3600 * 1000;

#ifdef Q_OS_WIN
constexpr auto NameCase = Qt::CaseInsensitive;
#else
constexpr auto NameCase = Qt::CaseSensitive;
#endif

/// For comparing names: without "..", with slashes and one at the end.
QString comparable(const QString& folder)
{
    const QString clean = QDir::cleanPath(QDir::fromNativeSeparators(folder.trimmed()));
    return clean.endsWith(u'/') ? clean : clean + u'/';
}

QString hoursMinutesSeconds(qint64 ms)
{
    return QStringLiteral("%1:%2:%3")
        .arg(ms / 3'600'000)
        .arg(ms / 60'000 % 60, 2, 10, QLatin1Char('0'))
        .arg(ms / 1000 % 60, 2, 10, QLatin1Char('0'));
}

/// "host.channel", in letters that every file system takes.
QString ownerName()
{
    QString host = QSysInfo::machineHostName().left(64);
    for (QChar& letter : host) {
        if (letter.unicode() > 127 || !letter.isLetterOrNumber())
            letter = u'-';
    }
    return host + u'.' + Channel::name();
}

QString keyOf(const RecordInfo& record)
{
    return CopyEntry::key(record.fileName, record.startMs() / 1000);
}

} // namespace

ArchiveCopy::Environment ArchiveCopy::Environment::real()
{
    return {Channel::dataFolder() + QStringLiteral("/copy.txt"),
            ownerName(),
            QDateTime::currentMSecsSinceEpoch,
            SettleTime,
            RetryInterval,
            Patience};
}

ArchiveCopy::ArchiveCopy(ArchiveIndex* index, QObject* parent, Environment environment)
    : QObject(parent), m_index(index), m_environment(std::move(environment)), m_createdMs(m_environment.nowMs())
{
    m_tick.setInterval(std::min<std::chrono::milliseconds>(m_environment.settle, m_environment.patience / 4));
    m_tick.callOnTimeout(this, &ArchiveCopy::step);
    m_soon.setSingleShot(true);
    m_soon.setInterval(m_environment.settle / 5);
    m_soon.callOnTimeout(this, &ArchiveCopy::step);
    connect(index, &ArchiveIndex::changed, this, [this] {
        m_listChanged = true;
        if (m_worker && !m_soon.isActive())
            m_soon.start();
    });
}

ArchiveCopy::~ArchiveCopy()
{
    stop();
}

QString ArchiveCopy::problemOf(const QString& folder, const QString& recordingsFolder)
{
    if (folder.trimmed().isEmpty())
        return tr("Choose the folder for the second copy.");
    if (!QDir::isAbsolutePath(folder.trimmed()))
        return tr("The folder of the second copy must be an absolute path.");
    if (!recordingsFolder.isEmpty() && comparable(folder).startsWith(comparable(recordingsFolder), NameCase))
        return tr("The second copy must be outside the recordings folder.");
    return {};
}

/// What runs may hang, so it is told to stop and left alone.
void ArchiveCopy::stop()
{
    if (m_folder)
        m_folder->cancel();
    m_folder.reset();
    m_worker.reset();
    m_tick.stop();
    m_soon.stop();
    m_busy = m_known = false;
    m_listChanged = true;
    m_present.clear();
    m_missing.clear();
    m_passedOver.clear();
    m_unsettled.clear();
    m_behindSince = {};
    m_error.clear();
    for (QElapsedTimer* timer : {&m_sinceLook, &m_sinceDeletion, &m_pause})
        timer->invalidate();
}

void ArchiveCopy::reload()
{
    const AppSettings& settings = AppSettings::instance();
    const QString given = settings.copyFolder.trimmed();
    const bool wanted = settings.copyEnabled && !given.isEmpty();
    const QString target = wanted ? QDir::cleanPath(QDir::fromNativeSeparators(given)) : QString();
    if (!wanted) // taking the tick and setting it again begins anew, on a new disk for instance
        QFile::remove(m_environment.memoryPath);
    if (target == m_target && m_index->folder() == m_source) {
        m_listChanged = true; // the days may be other ones
        m_sinceDeletion.invalidate();
        return;
    }
    stop();
    m_target = target;
    m_given = given;
    m_source = m_index->folder();
    // Without a folder of recordings, which may be another channel's, there is nothing to copy.
    if (wanted && !m_source.isEmpty()) {
        m_worker = std::make_unique<Worker>(this, Worker::Priority::Idle);
        m_folder = std::make_shared<CopyFolder>(CopyFolder::Options{m_source, m_target, m_environment.owner,
                                                                    m_environment.memoryPath, m_environment.settle,
                                                                    m_environment.beforeCompare});
        m_running.start();
        m_tick.start();
        step();
    }
    Q_EMIT stateChanged();
}

QString ArchiveCopy::copyOf(const RecordInfo& record) const
{
    const QString name = m_error.isEmpty() ? m_present.value(keyOf(record)).name : QString();
    return name.isEmpty() ? QString() : QDir(m_target).filePath(name);
}

qint64 ArchiveCopy::copiedBytes(const RecordInfo& record) const
{
    return m_present.value(keyOf(record)).bytes;
}

void ArchiveCopy::step()
{
    if (m_index->folder() != m_source) {
        reload();
        return;
    }
    if (!m_worker)
        return;
    findMissing();
    if (!isFree())
        return;
    if (!m_sinceLook.isValid() || m_sinceLook.hasExpired(LookEveryMs))
        look();
    else if (!m_sinceDeletion.isValid() || m_sinceDeletion.hasExpired(DeleteEveryMs))
        deleteOld();
    else
        copyNext();
}

/// Whether a task may be begun. Notices one that hangs.
bool ArchiveCopy::isFree()
{
    if (m_busy) {
        const quint64 progress = m_folder->progress();
        if (progress != std::exchange(m_progress, progress))
            m_sinceProgress.start();
        else if (m_sinceProgress.hasExpired(m_environment.patience.count()))
            fail(tr("The second copy waits: the folder %1 does not answer. Recording goes on; the copy will catch up.")
                     .arg(m_given));
        return false;
    }
    if (m_pause.isValid() && !m_pause.hasExpired(m_environment.retry.count()))
        return false;
    m_pause.invalidate();
    return true;
}

/// \param task runs on the worker and returns what is then to be done with its result, on this thread.
void ArchiveCopy::post(std::function<std::function<void()>(CopyFolder&)> task)
{
    m_busy = true;
    m_sinceProgress.start();
    m_worker->post([this, task = std::move(task), folder = m_folder, reply = m_worker->reply()] {
        reply([this, folder, done = task(*folder)] {
            if (folder != m_folder) // stopped in the meantime
                return;
            m_busy = false;
            done();
        });
    });
}

void ArchiveCopy::look()
{
    m_sinceLook.start();
    post([this](CopyFolder& folder) -> std::function<void()> {
        return [this, found = folder.look()] { onLooked(found); };
    });
}

QString ArchiveCopy::problemText(const CopyFolder::Found& found) const
{
    switch (found.problem) {
    case CopyFolder::Problem::Away:
        return tr("The second copy waits: the folder %1 is not there. Recording goes on; the copy will catch up.")
            .arg(m_given);
    case CopyFolder::Problem::NotOurs:
        return tr("The second copy waits: the copies made so far are not in the folder %1. Is its drive connected? To "
                  "begin anew there, switch the second copy off and on again.")
            .arg(m_given);
    case CopyFolder::Problem::Inside:
        return tr("The second copy must be outside the recordings folder.");
    default:
        return tr("The second copy waits: the folder %1 cannot be used (%2). Recording goes on; the copy will catch "
                  "up.")
            .arg(m_given, found.text);
    }
}

void ArchiveCopy::onLooked(const CopyFolder::Found& found)
{
    if (found.problem != CopyFolder::Problem::None) {
        fail(problemText(found));
        return;
    }
    m_known = true;
    m_present.clear();
    for (const CopyEntry& entry : found.present)
        m_present.insert(entry.key(), {entry.copy, entry.bytes});
    for (const QString& name : found.changed)
        Q_EMIT logMessage(
            tr("%1 in the second copy has changed. It is left alone, and another copy is made.").arg(name));
    m_passedOver.clear();
    m_listChanged = true;
    findMissing();
    if (m_missing.isEmpty())
        recover();
    step();
}

/// What is older than the copy's own retention would be deleted at once.
void ArchiveCopy::findMissing()
{
    if (!std::exchange(m_listChanged, false))
        return;
    const QDateTime now = QDateTime::fromMSecsSinceEpoch(m_environment.nowMs());
    const qint64 oldestMs = now.addDays(-std::max(AppSettings::instance().copyDays, 1)).toMSecsSinceEpoch();
    QList<RecordInfo> missing;
    const QList<RecordInfo> records = m_index->records();
    for (const RecordInfo& record : records) {
        const bool due = m_known ? record.startMs() >= oldestMs : record.endMs() >= m_createdMs;
        if (due && !record.inProgress && !m_present.contains(keyOf(record)))
            missing << record;
    }
    std::sort(missing.begin(), missing.end(),
              [](const RecordInfo& a, const RecordInfo& b) { return a.startMs() < b.startMs(); });
    setMissing(missing);
}

void ArchiveCopy::setMissing(const QList<RecordInfo>& missing)
{
    const bool changed = missing.size() != m_missing.size();
    m_missing = missing;
    if (m_missing.isEmpty())
        m_behindSince = {};
    else if (!m_behindSince.isValid())
        m_behindSince = QDateTime::fromMSecsSinceEpoch(m_environment.nowMs());
    if (changed)
        Q_EMIT stateChanged();
}

void ArchiveCopy::copyNext()
{
    const auto next = std::find_if(m_missing.cbegin(), m_missing.cend(), [this](const RecordInfo& record) {
        return !m_passedOver.contains(keyOf(record)) && !m_unsettled.contains(keyOf(record));
    });
    if (next == m_missing.cend()) {
        m_unsettled.clear(); // the next tick tries them again
        return;
    }
    post([this, record = *next](CopyFolder& folder) -> std::function<void()> {
        return [this, record, result = folder.copy(record)] { onCopied(record, result); };
    });
}

void ArchiveCopy::onCopied(const RecordInfo& record, const CopyFolder::Result& result)
{
    switch (result.outcome) {
    case CopyFolder::Outcome::Done: {
        m_present.insert(keyOf(record), {result.entry.copy, result.entry.bytes});
        QList<RecordInfo> rest = m_missing;
        rest.removeIf([&record](const RecordInfo& each) { return each.filePath == record.filePath; });
        setMissing(rest);
        recover();
        Q_EMIT copied(result.entry);
        break;
    }
    case CopyFolder::Outcome::Later:
        m_unsettled.insert(keyOf(record));
        break;
    case CopyFolder::Outcome::Gone:
        m_present.insert(keyOf(record), {}); // nothing is missing, and there is no copy
        m_listChanged = true;
        break;
    case CopyFolder::Outcome::Unreadable:
        m_passedOver.insert(keyOf(record));
        if (m_passedOver.size() == 1) // a failing disk has many
            Q_EMIT errorOccurred(tr("%1 cannot be read for the second copy: %2").arg(record.fileName, result.text));
        break;
    case CopyFolder::Outcome::Differs:
        fail(tr("The second copy waits: what was written into the folder %1 comes back changed. Its disk may be "
                "failing; "
                "look at it, or choose another.")
                 .arg(m_given));
        return;
    case CopyFolder::Outcome::Full:
        fail(tr("The second copy waits: the folder %1 is full. Recording goes on; the copy will catch up when there is "
                "room. Let fewer days of it be kept, or choose another folder.")
                 .arg(m_given));
        return;
    case CopyFolder::Outcome::Failed:
        fail(tr("The second copy waits: the folder %1 takes no file (%2). Recording goes on; the copy will catch up.")
                 .arg(m_given, result.text));
        return;
    case CopyFolder::Outcome::Cancelled:
        return;
    }
    step();
}

void ArchiveCopy::deleteOld()
{
    const int days = AppSettings::instance().copyDays;
    m_sinceDeletion.start();
    const qint64 nowMs = m_environment.nowMs();
    const qint64 oldest = QDateTime::fromMSecsSinceEpoch(nowMs).addDays(-std::max(days, 1)).toMSecsSinceEpoch() / 1000;
    post([this, oldest](CopyFolder& folder) -> std::function<void()> {
        return [this, names = folder.deleteOlder(oldest)] {
            for (const QString& name : names)
                Q_EMIT deleted(name);
            if (!names.isEmpty()) {
                Q_EMIT logMessage(tr("Deleted %n old file(s) from the second copy", nullptr, int(names.size())));
                m_sinceDeletion.invalidate(); // there may be more
            }
            step();
        };
    });
}

void ArchiveCopy::fail(const QString& text)
{
    m_pause.start();
    m_sinceLook.invalidate(); // another disk may be there afterwards
    if (!m_error.isEmpty())
        return;
    m_failedAtMs = m_running.elapsed();
    m_error = text;
    Q_EMIT errorOccurred(text);
    Q_EMIT stateChanged();
}

void ArchiveCopy::recover()
{
    if (m_error.isEmpty())
        return;
    m_error.clear();
    m_pause.invalidate();
    Q_EMIT logMessage(tr("The second copy goes on after %1; files behind: %2")
                          .arg(hoursMinutesSeconds(m_running.elapsed() - m_failedAtMs))
                          .arg(m_missing.size()));
    Q_EMIT stateChanged();
}
