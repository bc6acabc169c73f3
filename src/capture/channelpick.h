#pragma once

#include <QList>
#include <QString>

/// Which channels of an input device are recorded: all of them, a pair, or a single one. One sound card may carry
/// several programmes, and each is recorded by a process of its own.
struct ChannelPick {
    /// The largest sound cards have that many.
    static constexpr int MaxChannels = 64;

    int first = 0; ///< 1 is the device's first channel; 0: all channels, as the device delivers them
    int count = 0; ///< 2: `first` and the one behind it; 1: `first` alone; 0 when `first` is 0

    /// \param firstChannel, channelCount as the settings hold them. A number that makes no sense counts as the
    /// default: all channels, and a pair.
    static ChannelPick fromSettings(int firstChannel, int channelCount);
    /// What the settings dialog offers: everything, the pairs 1+2, 3+4 and so on, and each channel alone.
    static QList<ChannelPick> choices();

    bool isEverything() const { return first == 0; }
    /// Whether a device with that many channels has those that are picked.
    bool fits(int channels) const { return first + count - 1 <= channels; }
    /// "7 + 8", or "7"; empty for everything.
    QString numbers() const;

    bool operator==(const ChannelPick&) const = default;
};
