#pragma once

class QMenu;

/// The submenu that leads to the other channels of this computer.
namespace ChannelMenu {
/// Adds the submenu behind the other entries, shown only while there is a second channel.
void addTo(QMenu* menu);
} // namespace ChannelMenu
