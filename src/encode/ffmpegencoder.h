#pragma once

#include "encode/encoder.h"
#include "process/childprocess.h"

#include <QCoreApplication>
#include <QStringList>

#include <memory>

/// Lets an ffmpeg child process compress and write the file: PCM goes into its standard input. What ffmpeg prints
/// appears on the program's own error output. If the program dies, ffmpeg sees the end of its input and finishes the
/// file by itself.
class FfmpegEncoder : public Encoder {
    Q_DECLARE_TR_FUNCTIONS(FfmpegEncoder)
public:
    /// PCM that may wait for a child that does not keep up, before write() waits for it, and fails when the child takes
    /// nothing for 5 s. A disk or an ffmpeg that hangs must not eat all memory; this is 12 minutes of 44.1 kHz stereo.
    static constexpr qint64 MaxWaitingBytes = 128 * 1024 * 1024;

    /// \param codecName, formatName as ffmpeg calls them. \param bitrate kbit/s; 0: the codec chooses.
    FfmpegEncoder(const QString& codecName, const QString& formatName, int bitrate);
    ~FfmpegEncoder() override;

    bool open(const QString& path, const PcmFormat& format) override;
    bool write(const QByteArray& pcmS16) override;
    /// Waits up to 18 s for ffmpeg to finish the file, then kills it and waits 3 s more at most. bytesWritten() is the
    /// file's size from then on.
    void close() override;
    bool isOpen() const override;

    /// The arguments that ffmpeg is started with.
    QStringList arguments(const QString& path, const PcmFormat& format) const;

private:
    QString reasonOfEnd() const;
    void finishProcess();

    QString m_codecName;
    QString m_formatName;
    int m_bitrate;
    std::unique_ptr<ChildProcess> m_process;
};
