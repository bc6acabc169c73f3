#pragma once

#include "triggers/seriallines.h"
#include "triggers/triggersource.h"

#include <QList>
#include <QTimer>

#include <optional>

class QSerialPort;

/// A serial port as trigger: a contact closure that is watched on a modem-status line, or text commands.
/// A build whose Qt has no serial port module lists no ports and refuses to start.
class SerialTrigger : public TriggerSource {
    Q_OBJECT
public:
    enum class Mode { ControlLine = 1, TextCommands = 2 };

    /// Whether this build can use serial ports at all.
    static bool isSupported();
    /// A serial port of this machine, for choosing one.
    struct Port {
        QString name;
        QString label; ///< name and description, as the display name
    };
    static QList<Port> ports();

    explicit SerialTrigger(Mode mode, QObject* parent = nullptr);
    ~SerialTrigger() override;

    bool start() override;
    void stop() override;
    bool isActive() const override;
    QString description() const override;

private Q_SLOTS:
    void pollControlLines();
    void readCommands();

private:
    void onPortError();
    void checkForHangup();
    void lose(const QString& reason);
    void complainOfLines();

    Mode m_mode;
    QSerialPort* m_port = nullptr; ///< our child; null while stopped
    QTimer m_poll; ///< looks at the watched line, or in text mode whether the port is still there
    SerialLines m_lines;
    std::optional<bool> m_lineState; ///< as last reported; none before the first poll
    bool m_linesUnreadable = false; ///< and that was told
};
