#pragma once

#include <optional>

/// On Windows the program exists twice, made of the same parts: tidewell.exe, the window, has no console, and
/// tidewell.com, for the command line, has the one that it was started in. A console finds tidewell.com for "tidewell".
namespace ConsoleTwin {
/// For a process that was asked for the window: if it is tidewell.com, starts tidewell.exe with the same arguments, so
/// that the console is free again. \return the exit status to end with; nothing: this process opens the window itself.
std::optional<int> handWindowOver();
} // namespace ConsoleTwin
