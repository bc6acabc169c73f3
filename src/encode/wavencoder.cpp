#include "encode/wavencoder.h"

#include "encode/durable.h"

#include <QtEndian>

namespace {

template <class Integer>
void append(QByteArray& bytes, Integer value)
{
    const Integer little = qToLittleEndian(value);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

QByteArray header(const PcmFormat& format, quint64 dataBytes)
{
    QByteArray bytes;
    bytes.reserve(WavEncoder::HeaderBytes);
    bytes += "RIFF";
    append(bytes, quint32(dataBytes + 36));
    bytes += "WAVEfmt ";
    append(bytes, quint32(16));
    append(bytes, quint16(1)); // PCM
    append(bytes, quint16(format.channels));
    append(bytes, quint32(format.sampleRate));
    append(bytes, quint32(format.sampleRate * format.frameBytes()));
    append(bytes, quint16(format.frameBytes()));
    append(bytes, quint16(16)); // bits per sample
    bytes += "data";
    append(bytes, quint32(dataBytes));
    return bytes;
}

} // namespace

WavEncoder::~WavEncoder()
{
    WavEncoder::close();
}

bool WavEncoder::open(const QString& path, const PcmFormat& format)
{
    close();
    m_errorString.clear();
    m_format = format;
    m_dataBytes = 0;
    m_bytesWritten = 0;
    m_path = path;
    m_file.setFileName(path);
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)) {
        m_errorString = m_file.errorString();
        return false;
    }
    m_file.write(header(m_format, 0));
    return true;
}

bool WavEncoder::write(const QByteArray& pcmS16)
{
    if (!m_file.isOpen())
        return false;
    // A disk that is about to be full takes the first part of a block, and refuses the rest.
    for (qsizetype done = 0; done < pcmS16.size();) {
        const qint64 written = m_file.write(pcmS16.constData() + done, pcmS16.size() - done);
        if (written < 0) {
            m_errorString = m_file.errorString();
            keepRefused(pcmS16, done);
            return false;
        }
        if (written == 0)
            break;
        done += written;
        m_dataBytes += quint64(written);
        m_bytesWritten += written;
    }
    return true;
}

/// A frame that was cut in two goes whole into the next file.
void WavEncoder::keepRefused(const QByteArray& pcmS16, qsizetype done)
{
    const qsizetype cut = done % m_format.frameBytes();
    m_dataBytes -= quint64(cut);
    m_bytesWritten -= cut;
    m_refused = {pcmS16.mid(done - cut)};
}

void WavEncoder::close()
{
    if (!m_file.isOpen())
        return;
    const qint64 end = m_file.pos();
    m_file.seek(0);
    if (m_file.write(header(m_format, m_dataBytes)) < 0)
        noteFailure(m_file.errorString());
    m_file.seek(qMax(end, qint64(HeaderBytes)));
    if (!syncToDisk(m_file))
        noteFailure(qt_error_string());
    m_file.close();
}
