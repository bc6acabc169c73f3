#pragma once

#include <QCoreApplication>
#include <QString>

/// What somebody who helps from afar needs to see: the journal and crash reports, the settings without passwords, the
/// versions, the devices, and the status of the running channel.
class SupportBundle {
    Q_DECLARE_TR_FUNCTIONS(SupportBundle)
public:
    /// The newest files of the journal, one per month.
    static constexpr int MaxJournalFiles = 13;
    /// Larger files are left out.
    static constexpr qint64 MaxFileBytes = 64 * 1024 * 1024;

    /// Writes a ZIP file about the current channel, also while it runs. \return what went wrong; empty for nothing.
    static QString write(const QString& path);
};
