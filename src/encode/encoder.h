#pragma once

#include "capture/pcmformat.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <functional>
#include <utility>

/// Writes one audio file at a time. Failures come back as false, with their text in errorString().
class Encoder {
public:
    virtual ~Encoder() = default;

    /// Creates or truncates the file; one that is still open is finished first.
    virtual bool open(const QString& path, const PcmFormat& format) = 0;
    /// Never waits for a file that takes its time. \param pcmS16 one block in the format given to open(). After a
    /// failure takeQueued() has what is not in the file.
    virtual bool write(const QByteArray& pcmS16) = 0;
    /// Finishes the file and waits until it is on the disk. Without effect while nothing is open. If that fails,
    /// errorString() says why, unless it tells of an earlier failure already.
    virtual void close() = 0;
    virtual bool isOpen() const = 0;
    /// Bytes handed on since the last open().
    virtual qint64 bytesWritten() const { return m_bytesWritten; }

    /// Whether the file has taken nothing for 10 s of what was handed over. Only a new file helps then.
    virtual bool isStuck() const { return false; }
    /// false: the file has taken nothing for a second of what was handed over, and may never again.
    virtual bool makesProgress() const { return true; }
    /// Whether close() would take long: much waits for the file, or it makes no progress.
    virtual bool isBehind() const { return false; }
    /// Gives back what was handed over and is not in the file, oldest first, and what a failed write() refused.
    virtual QList<QByteArray> takeQueued() { return std::exchange(m_refused, {}); }
    /// close() without waiting, for a file that is stuck or behind. \param closed called when it is done, possibly
    /// before this returns; never if this object dies before.
    virtual void closeLater(const std::function<void()>& closed)
    {
        close();
        closed();
    }

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
    QList<QByteArray> m_refused; ///< the part of a block that write() did not get rid of
};
