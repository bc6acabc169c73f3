#pragma once

#include <QString>

/// The ffmpeg program to run: "ffmpeg.exe" beside the program, else "ffmpeg" on the executable search path; empty when
/// there is none. Looked for once per run.
QString ffmpegPath();
bool ffmpegAvailable();
