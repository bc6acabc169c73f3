#pragma once

#include <QCoreApplication>

class AppSettings;

/// What the display panel shows of the settings and the disk: pure functions of their arguments.
class StatusTexts {
    Q_DECLARE_TR_FUNCTIONS(StatusTexts)
public:
    /// Kind of source and its device or address. \param playbackLabel name of the playback device that the settings
    /// choose; empty for the default device. \param recordedInput name of the input device that is really recorded;
    /// empty: none is.
    static QString source(const AppSettings& settings, const QString& playbackLabel, const QString& recordedInput = {});
    /// Codec, bit rate if the codec has one, and channels.
    static QString codec(const AppSettings& settings);
    /// How long the free bytes last; negative: unknown. A rate below 1 byte per second is taken as 1.
    static QString diskLeft(qint64 freeBytes, qint64 bytesPerSecond);
    /// How far the second copy is, to go behind that; empty: there is none.
    static QString copy(bool enabled, int filesBehind);
};
