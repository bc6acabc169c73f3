#pragma once

/// What the settings dialog and the command line accept. The store may hold anything, so whoever uses a value
/// checks it.
namespace Limits {
template <class Number>
struct Range {
    Number lowest;
    Number highest;
};

inline constexpr int SampleRates[] = {8000, 11025, 16000, 22050, 32000, 44100, 48000}; // Hz
inline constexpr int Bitrates[] = {16, 24, 32, 40, 48, 56, 64, 80, 96, 112, 128, 160, 192, 256, 320}; // kbit/s
inline constexpr int BaudRates[] = {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};

inline constexpr Range<double> InputGainDb{-24.0, 24.0};
inline constexpr Range<int> VorbisQuality{-1, 10};
inline constexpr Range<int> FirstChannel{0, 64}; // 0: all, as the device delivers them
inline constexpr Range<int> StreamStallSeconds{3, 3600};
inline constexpr Range<int> SplitMinutes{0, 1440};
inline constexpr Range<int> Serial{1, 9999};
inline constexpr Range<int> HousekeepingDays{1, 3650};
inline constexpr Range<int> AlarmDelaySeconds{0, 86400};
inline constexpr Range<int> DiskLowHours{1, 8760};
inline constexpr Range<int> SilenceSeconds{1, 3600};
inline constexpr Range<double> SilenceThresholdDb{-90.0, 0.0};
inline constexpr Range<int> Port{1, 65535};
inline constexpr Range<int> SerialLine{0, 2};
inline constexpr Range<int> MidiDevice{0, 255};
inline constexpr Range<int> MidiChannel{0, 16}; // 0: any
inline constexpr Range<int> MidiNumber{0, 127};
inline constexpr Range<int> HoldSeconds{0, 600};
} // namespace Limits
