#pragma once

#include "settings/choices.h"

/// The colour theme of the whole program.
namespace Theme {
/// Switches style and palette at once, unless that theme is applied already; any other number follows the system. Going
/// back to FollowSystem restores exactly the style and the palette that the program had before the first call.
void apply(int theme);
} // namespace Theme
