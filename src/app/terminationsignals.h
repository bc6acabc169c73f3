#pragma once

#include <QObject>

/// Tells when the system or the user asks the program to end, so that it can finish its file first: SIGTERM, SIGINT
/// and SIGHUP on Linux; Ctrl+C, Ctrl+Break and the closing of the console on Windows. A
/// program with a window is asked by a message to its window there.
class TerminationSignals : public QObject {
    Q_OBJECT
public:
    /// One object per process, on the main thread.
    explicit TerminationSignals(QObject* parent = nullptr);

Q_SIGNALS:
    void terminationRequested();
    /// SIGHUP, which asks a service to read its settings again and a program with a window to end.
    void hangUp();
};
