#pragma once

#include <QCoreApplication>

class AppSettings;

/// What the display panel shows of the settings and the disk.
class StatusTexts {
    Q_DECLARE_TR_FUNCTIONS(StatusTexts)
public:
    /// Kind of source and its device or address. \param playbackLabel name of the playback device that the settings
    /// choose; empty for the default one.
    static QString source(const AppSettings& settings, const QString& playbackLabel);
    /// That name, from the system, which may take 2 seconds to answer; the id where it is not there. Empty for the
    /// default device.
    static QString playbackLabel(const QByteArray& playbackId);
    /// Codec, bit rate where it is one, and channels.
    static QString codec(const AppSettings& settings);
    /// How long the free bytes last; negative: unknown. A rate below 1 byte a second is taken as 1.
    static QString diskLeft(qint64 freeBytes, qint64 bytesPerSecond);
    /// Free bytes of the folder's volume, -1 when that cannot be told. Makes the folder if it is missing.
    static qint64 freeBytes(const QString& folder);
};
