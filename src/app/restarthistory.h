#pragma once

#include <QByteArray>
#include <QList>

#include <chrono>

/// Starts after crashes: a program that crashes at once, each time, must not use up the machine and flood the journal.
/// Two within a minute of running happen at once; from the third on each waits longer: 5, 10, 20, 40, then 60 seconds.
namespace RestartHistory {
struct Restart {
    qint64 atMs = 0; ///< since the epoch
    qint64 waitMs = 0; ///< that it waited before it went on

    friend bool operator==(const Restart&, const Restart&) = default;
};

/// How long a restart now must wait. \param before the restarts before it, the oldest first. Where the clock was set
/// back in between, nothing before counts.
std::chrono::milliseconds wait(const QList<Restart>& before, qint64 nowMs);

/// The history as text, and back: what cannot be read is left out.
QByteArray toText(const QList<Restart>& restarts);
QList<Restart> fromText(const QByteArray& text);

/// Adds a restart to the history in this file. \return how long it must wait. When the file cannot be written that is
/// 5 seconds at least, since the next one will not know of this one.
std::chrono::milliseconds add(const QString& path, qint64 nowMs);
} // namespace RestartHistory
