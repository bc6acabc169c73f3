#pragma once

/// Starting the program when the user logs on.
namespace Autostart {
/// Writes or removes the log-on entry of this program and channel.
void setEnabled(bool enable);
} // namespace Autostart
