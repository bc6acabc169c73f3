#pragma once

#include "encode/encoder.h"
#include "process/childprocess.h"

#include <QCoreApplication>
#include <QStringList>

#include <chrono>
#include <memory>

/// Lets an ffmpeg child process compress and write the file: PCM goes into its standard input. What ffmpeg prints
/// appears on the program's own error output. If the program dies, ffmpeg sees the end of its input and finishes the
/// file by itself.
class FfmpegEncoder : public Encoder {
    Q_DECLARE_TR_FUNCTIONS(FfmpegEncoder)
public:
    /// How long a child that takes something, but too little, may keep a block waiting before write() fails: as long as
    /// that costs some 100 MB of memory. The silence that makes up for a long outage is taken faster than that.
    static constexpr std::chrono::minutes BehindAtMost{10};
    /// A child that takes nothing for so long is stuck.
    static constexpr std::chrono::seconds StuckAfter{10};

    /// \param codecName, formatName as ffmpeg calls them. \param bitrate kbit/s; 0: the codec chooses.
    FfmpegEncoder(const QString& codecName, const QString& formatName, int bitrate);
    ~FfmpegEncoder() override;

    bool open(const QString& path, const PcmFormat& format) override;
    bool write(const QByteArray& pcmS16) override;
    /// Waits up to 18 s for ffmpeg to finish the file, then kills it and waits 3 s more at most. bytesWritten() is the
    /// file's size from then on.
    void close() override;
    bool isOpen() const override;
    bool isStuck() const override;
    bool makesProgress() const override;
    bool isBehind() const override;
    QList<QByteArray> takeQueued() override;
    void closeLater(const std::function<void()>& closed) override;

    /// The arguments that ffmpeg is started with.
    QStringList arguments(const QString& path, const PcmFormat& format) const;

private:
    QString reasonOfEnd() const;
    void noteEnd(bool inTime);
    void syncFile();

    QString m_codecName;
    QString m_formatName;
    int m_bitrate;
    std::unique_ptr<ChildProcess> m_process;
};
