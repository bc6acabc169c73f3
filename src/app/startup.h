#pragma once

#include "app/commandline.h"

#include <QLockFile>

class Station;

/// What every face of the program does before its event loop runs.
namespace StartUp {
/// Names organisation, application and version. To be called once the application object exists.
void nameApplication();
/// Loads the settings of the channel and installs the translation into their language.
void loadSettings(const CommandLine& line);
/// Prepares for a crash: a report beside the journal, and a new process if the settings ask for one.
void armCrashHandlers(const CommandLine& line);
/// Tells of a crash of the last run, in the log and the journal.
void mentionCrash(Station& station);

/// Keeps a second instance of the channel from recording the same source into the same files.
class InstanceLock {
public:
    InstanceLock();
    /// \return false when another instance runs.
    bool take();

private:
    QLockFile m_lock;
};
} // namespace StartUp
