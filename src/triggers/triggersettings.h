#pragma once

#include <QVariantMap>

/// All settings that a trigger source takes when it starts, as a value: whether it must be made anew is a comparison.
/// The run-on time is not among them, as it is read when it is needed.
struct TriggerSettings {
    /// As they are now.
    static TriggerSettings current();

    QVariantMap values; ///< by their keys

    friend bool operator==(const TriggerSettings&, const TriggerSettings&) = default;
};
