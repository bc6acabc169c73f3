#pragma once

#include <QString>

/// Length in ms told by a WAV file's header and size, or estimated for an MP3 from its first frame's bit rate (whole
/// seconds). 0 for any other suffix, and for a file that cannot be read or has no such header.
/// Reads at most 64 bytes of a WAV and 10 + 8192 of an MP3.
qint64 probeDurationMs(const QString& filePath);
