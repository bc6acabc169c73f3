#include "archive/housekeeper.h"

#include "archive/archiveindex.h"
#include "settings/appsettings.h"

#include <QFile>

#include <chrono>

using namespace std::chrono_literals;

namespace {

constexpr auto PassInterval = 1h;
/// Soon after the start, without making it slower.
constexpr auto FirstPassDelay = 5s;

} // namespace

Housekeeper::Housekeeper(ArchiveIndex* index, QObject* parent) : QObject(parent), m_index(index)
{
    connect(&m_timer, &QTimer::timeout, this, &Housekeeper::runNow);
    m_timer.start(PassInterval);
    QTimer::singleShot(FirstPassDelay, this, &Housekeeper::runNow);
}

/// What began before it may go; invalid when everything is kept.
QDateTime Housekeeper::cutOff()
{
    const AppSettings& settings = AppSettings::instance();
    if (!settings.housekeepingEnabled || settings.housekeepingDays < 1)
        return {};
    return QDateTime::currentDateTime().addDays(-settings.housekeepingDays);
}

void Housekeeper::runNow()
{
    const QDateTime oldest = cutOff();
    if (!oldest.isValid() || !m_index || !m_due.isEmpty())
        return;
    m_folder = m_index->folder();
    const QList<RecordInfo> records = m_index->records();
    for (const RecordInfo& record : records) {
        if (!record.inProgress && record.start.isValid() && record.start < oldest)
            m_due << record;
    }
    m_deleted = 0;
    if (!m_due.isEmpty())
        deleteNext();
}

void Housekeeper::deleteNext()
{
    const RecordInfo record = m_due.takeFirst();
    // The settings and the folder may be other ones by now.
    const QDateTime oldest = cutOff();
    if (!oldest.isValid() || m_index->folder() != m_folder) {
        m_due.clear();
    } else if (record.start < oldest && QFile::remove(record.filePath)) {
        m_index->removeRecord(record.filePath);
        ++m_deleted;
        Q_EMIT deleted(record.filePath);
    }
    if (!m_due.isEmpty()) {
        QTimer::singleShot(0, this, &Housekeeper::deleteNext);
    } else if (m_deleted > 0) {
        Q_EMIT logMessage(tr("Deleted %n old recording(s)", nullptr, m_deleted));
        m_index->rescan();
    }
}
