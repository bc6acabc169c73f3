#pragma once

#include <QStringList>

#include <functional>
#include <memory>

/// One MIDI input of this machine.
class MidiInput {
public:
    /// A short message, packed: status in bits 0-7, first data byte in 8-15, second in 16-23. Called on a thread of the
    /// system's.
    using Handler = std::function<void(quint32 message)>;

    /// Names of the inputs that are there; open() takes an index into this list.
    static QStringList deviceNames();

    /// Opens and starts an input. \return 0, or the system's error number.
    int open(int index, Handler handler);
    /// Once this returns, the handler is not called any more. Safe at any time.
    void close() { m_device.reset(); }
    bool isOpen() const { return m_device != nullptr; }
    /// Names of the inputs that are there now, asked for over the open input's own connection where the system has one,
    /// so that it may be called every few seconds. Empty while closed.
    QStringList namesNow() const { return m_device ? m_device->namesNow() : QStringList(); }

private:
    /// An open input, which its destructor closes.
    struct Device {
        virtual ~Device() = default;
        virtual QStringList namesNow() const = 0;
    };
    struct SystemDevice; ///< the platform's
    std::unique_ptr<Device> m_device;
};
