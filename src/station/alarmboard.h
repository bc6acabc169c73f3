#pragma once

#include "station/alarm.h"

#include <QObject>

#include <array>
#include <optional>

/// Decides when somebody is to be told: what holds for as long as the settings ask raises an alarm, and its end is told
/// with its duration. What ends sooner is no news.
class AlarmBoard : public QObject {
    Q_OBJECT
public:
    /// What is the case just now, by AlarmKind.
    using Conditions = std::array<bool, AlarmCount>;

    using QObject::QObject;

    /// Looks at the conditions; to be called every second or so. \param monotonicMs grows with the time, whatever the
    /// clock does. \param now the local clock.
    void look(const Conditions& conditions, qint64 monotonicMs, const QDateTime& now);
    /// Tells of something that has happened and does not last.
    void tell(AlarmKind kind, const QDateTime& now);
    bool isRaised(AlarmKind kind) const { return m_states[size_t(kind)].raised; }

    /// \return the name of an alarm for people, without an article.
    static QString displayName(AlarmKind kind);

Q_SIGNALS:
    void raised(const Alarm& alarm);
    /// Back to normal.
    void over(const Alarm& alarm);

private:
    struct State {
        std::optional<qint64> sinceMs; ///< on the monotonic clock
        QDateTime since;
        bool raised = false;
    };
    static QString sentence(AlarmKind kind);

    std::array<State, AlarmCount> m_states;
};
