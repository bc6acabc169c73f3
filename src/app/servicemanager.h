#pragma once

#include <QObject>
#include <QTimer>

/// The service manager that has started the program, if there is one: systemd on Linux.
namespace ServiceManager {
/// Whether the service manager restarts the program after a crash, so that the program must not do that itself.
bool restartsUs();

/// Tells the service manager that the program has started, and from then on, as often as it asks for that, that the
/// event loop turns.
class Reporter : public QObject {
    Q_OBJECT
public:
    explicit Reporter(QObject* parent = nullptr);

    void ready();
    /// Tells that the program is about to end.
    void stopping();

private:
    QTimer m_watchdog;
};
} // namespace ServiceManager
