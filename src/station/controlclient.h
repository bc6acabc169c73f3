#pragma once

#include <QJsonObject>
#include <QString>

#include <chrono>

/// Speaks to the running instance of a channel. A request and its answer are one JSON object each, on a line of its
/// own, through a local socket that only this user can open.
///
/// | "command" | further members | members of the answer |
/// | --- | --- | --- |
/// | "status" | | "status": StationStatus::toJson() |
/// | "record", "stop" | | "recording": whether it records now |
/// | "show" | | |
/// | "exit" | | |
/// | "get" | | "values": object of texts, without the secrets |
/// | "set" | "values": object of texts | |
///
/// Every answer has "ok", and "error", a sentence, when that is false.
namespace ControlClient {
/// The longest request or answer.
inline constexpr qint64 MaxBytes = 256 * 1024;

/// Path of this channel's socket; on Windows the name of its pipe.
QString socketName(const QString& channel);

/// What came of a request.
struct Reply {
    enum class State { NotRunning, NoAnswer, Answered };
    State state = State::NotRunning;
    QJsonObject answer; ///< empty unless Answered

    explicit operator bool() const { return state == State::Answered; }
};
/// Asks, and waits for the answer. A channel that runs but hangs or is busy gives NoAnswer.
Reply ask(const QString& channel, const QJsonObject& request,
          std::chrono::milliseconds timeout = std::chrono::seconds(5));
} // namespace ControlClient
