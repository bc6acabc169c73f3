#pragma once

/// The colour theme of the whole program. The numbers are those that the settings store.
namespace Theme {
enum Choice { FollowSystem = 0, Light = 1, Dark = 2 };

/// Switches style and palette at once; any other number follows the system. Going back to FollowSystem restores
/// exactly the style and the palette that the program had before the first call.
void apply(int theme);
} // namespace Theme
