#pragma once

#include "app/commandline.h"

#include <chrono>

class Station;

/// What every face of the program does before its event loop runs.
namespace StartUp {
/// Names organisation, application and version. To be called once the application object exists.
void nameApplication();
/// Loads the settings of the channel and installs the translation into their language.
void loadSettings(const CommandLine& line);
/// Prepares for a crash: a report beside the journal, and a new process if the settings ask for one.
void armCrashHandlers(const CommandLine& line);
/// Holds up a process that was started after a crash, if there were too many of them. To be called before the lock is
/// taken, so that the operator can start the program meanwhile. \return how long it has waited.
std::chrono::seconds waitAfterCrashes(const CommandLine& line);
/// Tells of a crash of the last run, in the log and the journal. \param waited by waitAfterCrashes().
void mentionCrash(Station& station, std::chrono::seconds waited);
} // namespace StartUp
