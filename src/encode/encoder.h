#pragma once

#include "capture/pcmformat.h"

#include <QByteArray>
#include <QString>

/// Writes one audio file at a time. Failures come back as false, with their text in errorString().
class Encoder {
public:
    virtual ~Encoder() = default;

    /// Creates or truncates the file; one that is still open is finished first.
    virtual bool open(const QString& path, const PcmFormat& format) = 0;
    /// \param pcmS16 one block in the format given to open(). A block that failed is lost; the file stays open.
    virtual bool write(const QByteArray& pcmS16) = 0;
    /// Finishes the file and waits until it is on the disk. Without effect while nothing is open. If that fails,
    /// errorString() says why, unless it tells of an earlier failure already.
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    /// Bytes handed on since the last open().
    virtual qint64 bytesWritten() const { return m_bytesWritten; }

    /// Text of the last failure; empty if there was none.
    QString errorString() const { return m_errorString; }

protected:
    Encoder() = default;
    Q_DISABLE_COPY_MOVE(Encoder)
    /// Keeps the first failure: those after it mostly follow from it.
    void noteFailure(const QString& text)
    {
        if (m_errorString.isEmpty())
            m_errorString = text;
    }

    QString m_path;
    QString m_errorString;
    qint64 m_bytesWritten = 0;
};
