#pragma once

#include "encode/encoder.h"

#include <QCoreApplication>
#include <QFile>

/// A stand-in for an encoder that this build was made without: it refuses to open, and createEncoder() never makes one.
class CompiledOutEncoder : public Encoder {
public:
    bool write(const QByteArray&) override { return false; }
    void close() override {}
    bool isOpen() const override { return m_file.isOpen(); }

private:
    QFile m_file;
};

class LameEncoder : public CompiledOutEncoder {
    Q_DECLARE_TR_FUNCTIONS(LameEncoder)
public:
    bool open(const QString& path, const PcmFormat& format) override;
};

class VorbisEncoder : public CompiledOutEncoder {
    Q_DECLARE_TR_FUNCTIONS(VorbisEncoder)
public:
    bool open(const QString& path, const PcmFormat& format) override;
};
