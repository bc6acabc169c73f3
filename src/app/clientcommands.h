#pragma once

#include "app/commandline.h"
#include "station/controlclient.h"

/// What the command line asks of a running channel, or of the settings of one that does not run.
class ClientCommands {
    Q_DECLARE_TR_FUNCTIONS(ClientCommands)
public:
    /// Exit statuses.
    enum Status { Ok = 0, Idle = 1, Failed = 1, NotRunning = 2, NoAnswer = 3, WrongUsage = 64 };

    /// Carries out one of the actions that need neither a window nor a station of their own, and prints what it found.
    /// \return the exit status.
    static int run(const CommandLine& line);

private:
    /// Says why there is no answer. \return the exit status for that.
    static int complainOf(const ControlClient::Reply& reply);
    static int status();
    static int command(const QString& name);
    static int set(const CommandLine& line);
    static int get(const CommandLine& line);
    static int support(const QString& file);
};
