#pragma once

#include <QByteArray>
#include <QSaveFile>
#include <QString>

/// Writes a ZIP file (PKWARE APPNOTE 6.3.3, without its extensions): enough for files that are sent to somebody. The
/// file appears when it is complete, or not at all. Entries and the whole stay below 2 GiB.
class ZipWriter {
public:
    explicit ZipWriter(const QString& path);

    bool open();
    /// \param name within the ZIP, with forward slashes.
    void add(const QString& name, const QByteArray& content);
    /// \return false when anything could not be written; errorString() says why.
    bool finish();
    QString errorString() const { return m_file.errorString(); }

private:
    QSaveFile m_file;
    QByteArray m_directory; ///< the entries of the central directory so far
    quint16 m_entries = 0;
};
