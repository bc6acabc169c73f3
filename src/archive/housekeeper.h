#pragma once

#include <QObject>
#include <QTimer>

class ArchiveIndex;

/// Deletes recordings that began longer ago than the settings allow. Knows files only through the index: what the index
/// does not list is never touched. A file that cannot be deleted is tried again an hour later.
class Housekeeper : public QObject {
    Q_OBJECT
public:
    /// The first pass runs 5 seconds later, then one an hour. \param index not owned, may be null.
    explicit Housekeeper(ArchiveIndex* index, QObject* parent = nullptr);

public Q_SLOTS:
    /// One pass, as the settings are now.
    void runNow();

Q_SIGNALS:
    /// One line for a pass that deleted anything.
    void logMessage(const QString& text);

private:
    ArchiveIndex* m_index;
    QTimer m_timer;
};
