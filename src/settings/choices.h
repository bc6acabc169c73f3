#pragma once

/// The numbers that the settings store for a choice. Fields keep them as plain int, because the store may hold any.

/// capture/backend. Anything else is the input device.
enum class CaptureBackend { Loopback = 0, InputDevice = 1, Stream = 2 };

/// trigger/kind. Anything else is no trigger.
enum class TriggerKind { None = 0, SerialLine = 1, SerialText = 2, Midi = 3 };

/// general/closeAction: what the close button of the window does.
enum class CloseAction { Ask = 0, Minimise = 1, Exit = 2 };

namespace Theme {
/// general/theme.
enum Choice { FollowSystem = 0, Light = 1, Dark = 2 };
} // namespace Theme
