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
    if (!settings.housekeepingEnabled || settings.housekeepingDays < 1 || !m_index || !m_due.isEmpty())
        return;
    const QDateTime oldest = QDateTime::currentDateTime().addDays(-settings.housekeepingDays);
    const QList<RecordInfo> records = m_index->records();
    for (const RecordInfo& record : records) {
        if (!record.inProgress && record.start.isValid() && record.start < oldest)
            m_due << record.filePath;
    }
    m_deleted = 0;
    if (!m_due.isEmpty())
        deleteNext();
}

void Housekeeper::deleteNext()
{
    const QString path = m_due.takeFirst();
    if (QFile::remove(path)) {
        m_index->removeRecord(path);
        ++m_deleted;
    }
    if (!m_due.isEmpty()) {
        QTimer::singleShot(0, this, &Housekeeper::deleteNext);
    } else if (m_deleted > 0) {
        Q_EMIT logMessage(tr("Deleted %n old recording(s)", nullptr, m_deleted));
        m_index->rescan();
    }
}
