#include "station/journal.h"

#include "station/hiddenfolder.h"
#include "station/journalfile.h"
#include "station/journalmirror.h"

#include <QDir>

#include <utility>

using namespace std::chrono_literals;

namespace {

constexpr auto RetryInterval = 10s;
constexpr auto Patience = 2s;
/// A new folder is made a moment after it was chosen, and a share may blink.
constexpr int ToleratedFailures = 3;

} // namespace

Journal::Journal(const QString& folder, QObject* parent)
    : QObject(parent), m_folder(folder), m_file(std::make_shared<JournalFile>(folder)), m_writer(this), m_mirrorer(this)
{
    qRegisterMetaType<QList<JournalEntry>>();
    m_retry.setInterval(RetryInterval);
    connect(&m_retry, &QTimer::timeout, this, &Journal::mirror);
}

Journal::~Journal()
{
    if (m_writer.finish(Patience) && m_copy) {
        m_mirrorer.post([copy = m_copy] { copy->update(); });
        m_mirrorer.finish(Patience);
    }
}

void Journal::setRecordingsFolder(const QString& path)
{
    const QString target = path.isEmpty() ? QString() : HiddenFolder::path(path);
    if (target == std::exchange(m_target, target))
        return;
    m_copy = target.isEmpty() ? nullptr : std::make_shared<JournalMirror>(m_folder, target);
    mirror();
}

void Journal::write(const QString& event, const QString& text, const QJsonObject& fields)
{
    write(JournalEntry::now(event, text, fields));
}

void Journal::write(const JournalEntry& entry)
{
    const auto append = [this](const JournalEntry& line) {
        return m_writer.post([file = m_file, line, reply = m_writer.reply(), this] {
            const bool ok = file->append(line);
            reply([this, ok] { onWritten(ok); });
        });
    };
    if (m_lost > 0 &&
        append(JournalEntry::now(QStringLiteral("journal.lost"), {}, {{QStringLiteral("lines"), m_lost}})))
        m_lost = 0;
    if (!append(entry))
        ++m_lost;
}

void Journal::readLinesBefore(qint64 utcMs, int atMost)
{
    m_writer.post([file = m_file, utcMs, atMost, reply = m_writer.reply(), this] {
        reply([this, lines = file->linesBefore(utcMs, atMost)] { Q_EMIT linesRead(lines); });
    });
}

void Journal::findUnhashed()
{
    m_writer.post([file = m_file, reply = m_writer.reply(), this] {
        if (const QStringList files = file->unhashedFiles(); !files.isEmpty())
            reply([this, files] { Q_EMIT unhashedFound(files); });
    });
}

void Journal::onWritten(bool ok)
{
    if (ok)
        mirror();
    if (ok == !m_writeFailing)
        return;
    m_writeFailing = !ok;
    if (m_writeFailing)
        Q_EMIT failed(tr("The journal cannot be written into %1. Its lines wait in memory until it can.")
                          .arg(QDir::toNativeSeparators(m_folder)));
    else
        Q_EMIT recovered(tr("The journal is written again."));
}

void Journal::mirror()
{
    if (!m_copy)
        return;
    // One copy at a time: a share that hangs must not gather them.
    m_mirrorDue = !m_mirrorer.isIdle();
    if (m_mirrorDue)
        return;
    m_mirrorer.post([copy = m_copy, reply = m_mirrorer.reply(), this] {
        const bool ok = copy->update();
        reply([this, ok] { onMirrored(ok); });
    });
}

void Journal::onMirrored(bool ok)
{
    if (ok)
        m_retry.stop();
    else if (!m_retry.isActive())
        m_retry.start();
    const int failuresBefore = std::exchange(m_mirrorFailures, ok ? 0 : m_mirrorFailures + 1);
    if (m_mirrorFailures == ToleratedFailures)
        Q_EMIT failed(tr("The journal cannot be copied into the recordings folder (%1). It is kept in %2 until then.")
                          .arg(QDir::toNativeSeparators(m_target), QDir::toNativeSeparators(m_folder)));
    else if (ok && failuresBefore >= ToleratedFailures)
        Q_EMIT recovered(tr("The journal is copied into the recordings folder again."));
    if (ok && m_mirrorDue)
        mirror();
}
