#include "foundation/math/floor.h"

#include <cmath>
#include <limits>

long gfIFloor(double value) {
    using Limits = std::numeric_limits<long>;
    const double below = std::floor(value);
    // The first double past the largest long is a power of two, exact; casting it or beyond would be undefined.
    const double end = std::ldexp(1.0, Limits::digits);
    if (below >= end)
        return Limits::max();
    if (below < -end)
        return Limits::min();
    return std::isnan(below) ? 0 : static_cast<long>(below);
}
