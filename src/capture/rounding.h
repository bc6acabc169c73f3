#pragma once

#include <cmath>

/// y rounded to the nearest integer, halves away from zero, as std::round does; for |y| < 2^31. Adding the largest
/// double below one half, instead of one half, keeps 0.49999999999999994 from becoming 1.
inline int roundHalfAway(double y)
{
    return int(y + std::copysign(0.49999999999999994, y));
}
