#pragma once

#include <QObject>

/// Tells when the system or the user asks the program to end, so that it can finish its file first: SIGTERM, SIGINT
/// and SIGHUP on Linux. Windows asks through the window instead.
class TerminationSignals : public QObject {
    Q_OBJECT
public:
    /// One object a process, on the main thread.
    explicit TerminationSignals(QObject* parent = nullptr);

Q_SIGNALS:
    void terminationRequested();
};
