#pragma once

#include "encode/encoder.h"

#include <QFile>

/// Writes uncompressed RIFF/WAVE files. Blocks go straight to the operating system, so that a killed program loses
/// nothing of them and a full disk shows at the write. The sizes in the header are written when the file is closed;
/// until then they are 0, and beyond 4 GiB of audio they wrap around.
class WavEncoder : public Encoder {
public:
    static constexpr int HeaderBytes = 44;

    WavEncoder() = default;
    ~WavEncoder() override;

    bool open(const QString& path, const PcmFormat& format) override;
    bool write(const QByteArray& pcmS16) override;
    void close() override;
    bool isOpen() const override { return m_file.isOpen(); }

private:
    void keepRefused(const QByteArray& pcmS16, qsizetype done);

    QFile m_file;
    PcmFormat m_format;
    quint64 m_dataBytes = 0;
};
