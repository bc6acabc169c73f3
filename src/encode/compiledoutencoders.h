#pragma once

#include "encode/encoder.h"

#include <QCoreApplication>
#include <QFile>

/// Stand-ins for encoders that this build was made without: they refuse to open, and createEncoder() never makes one.
class LameEncoder : public Encoder {
    Q_DECLARE_TR_FUNCTIONS(LameEncoder)
public:
    bool open(const QString& path, const PcmFormat& format) override;
    bool write(const QByteArray& pcmS16) override;
    void close() override;
    bool isOpen() const override { return m_file.isOpen(); }

private:
    QFile m_file;
};

class VorbisEncoder : public Encoder {
    Q_DECLARE_TR_FUNCTIONS(VorbisEncoder)
public:
    bool open(const QString& path, const PcmFormat& format) override;
    bool write(const QByteArray& pcmS16) override;
    void close() override;
    bool isOpen() const override { return m_file.isOpen(); }

private:
    QFile m_file;
};
