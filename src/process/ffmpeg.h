#pragma once

#include <QString>

/// The ffmpeg program to run: "ffmpeg.exe" beside the program, else "ffmpeg" on the executable search path; empty when
/// there is none. Looked for once per run.
QString ffmpegPath();
bool ffmpegAvailable();
/// What it says of its version, in one line; "none" without it. Waits for it, 3 seconds at most.
QString ffmpegVersion();
