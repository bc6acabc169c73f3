#include "archive/housekeeper.h"

#include "app/appsettings.h"
#include "archive/archiveindex.h"

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

void Housekeeper::runNow()
{
    const AppSettings& settings = AppSettings::instance();
    if (!settings.housekeepingEnabled || settings.housekeepingDays < 1 || !m_index)
        return;
    const QDateTime oldest = QDateTime::currentDateTime().addDays(-settings.housekeepingDays);
    int deleted = 0;
    const QList<RecordInfo> records = m_index->records();
    for (const RecordInfo& record : records) {
        if (record.inProgress || !record.start.isValid() || record.start >= oldest)
            continue;
        if (QFile::remove(record.filePath)) {
            m_index->removeRecord(record.filePath);
            ++deleted;
        }
    }
    if (deleted > 0) {
        Q_EMIT logMessage(tr("Deleted %n old recording(s)", nullptr, deleted));
        m_index->rescan();
    }
}
