#pragma once

#include <QHash>
#include <QString>

class QDir;
class QFile;

/// Copies the journal from the local disk into the recordings folder, where it belongs to the recordings. Not
/// thread-safe; its calls wait for disk and share without a limit.
class JournalMirror {
public:
    JournalMirror(const QString& source, const QString& target) : m_source(source), m_target(target) {}

    /// Brings the copy up to date by appending what it lacks; makes the target if its parent exists.
    /// A file there that holds something else than ours, because another computer used the folder, is left alone, and
    /// ours goes to "2026-11.2.jsonl" and so on. Our own copy's last line is completed if a power failure cut it.
    /// \return false when the target could not be reached or written.
    bool update();

private:
    /// A copy that was compared with the original, or written by this object.
    struct Copy {
        QString path;
        qint64 bytes = 0;
    };
    bool updateFile(const QString& sourcePath, const QDir& target, const QString& baseName);
    bool append(QFile& original, const QString& copyPath, qint64 from);

    QString m_source;
    QString m_target;
    QHash<QString, Copy> m_known; ///< by the path of the original
};
