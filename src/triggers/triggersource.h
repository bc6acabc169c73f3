#pragma once

#include <QObject>

/// An outside input that can switch recording on and off. Its signals are always emitted on its own thread, the
/// user-interface thread.
class TriggerSource : public QObject {
    Q_OBJECT
public:
    using QObject::QObject;

    /// Opens the input and watches it. \return false after errorOccurred() when that could not be done.
    virtual bool start() = 0;
    /// Releases the input; safe at any time.
    virtual void stop() = 0;
    /// Whether the input is open.
    virtual bool isActive() const = 0;
    /// One line with the input's display name.
    virtual QString description() const = 0;

Q_SIGNALS:
    void triggeredOn();
    void triggeredOff();
    void logMessage(const QString& text);
    void errorOccurred(const QString& text);
};
