#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

/// Cuts what a serial port delivers into text lines. Memory is bounded: a sender without line ends is forgotten.
class SerialLines {
public:
    /// More than this without a line feed is discarded.
    static constexpr qsizetype MaxPending = 4096;

    /// Takes in what came; next() then gives the lines.
    void append(const QByteArray& bytes) { m_pending += bytes; }
    /// The next line without its end and surrounding white space, read as Latin-1; nothing when none is complete.
    std::optional<QString> next();
    void clear() { m_pending.clear(); }

private:
    QByteArray m_pending;
};

/// What a line says to the trigger.
enum class SerialCommand { None, On, Off };
/// Compared without regard to case; the settings' commands as they stand.
SerialCommand serialCommand(const QString& line, const QString& onCommand, const QString& offCommand);
