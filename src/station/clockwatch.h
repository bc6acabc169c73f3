#pragma once

#include <QObject>

#include <functional>
#include <optional>

/// Notices that the system's clock was set, by comparing it with a clock that never is.
class ClockWatch : public QObject {
    Q_OBJECT
public:
    /// The two clocks, in ms.
    struct Clocks {
        std::function<qint64()> wall; ///< since the epoch
        std::function<qint64()> monotonic;

        static Clocks system();
    };
    /// Smaller steps are not reported: a time service corrects the clock all the time.
    static constexpr qint64 ToleratedMs = 1000;

    explicit ClockWatch(QObject* parent = nullptr, Clocks clocks = Clocks::system());

public Q_SLOTS:
    /// To be called every now and then.
    void look();

Q_SIGNALS:
    /// The clock was set, or the machine has slept. \param byMs positive: forward.
    void clockSet(qint64 byMs);

private:
    Clocks m_clocks;
    std::optional<qint64> m_difference; ///< between the two clocks at the last look
};
