#pragma once

#include <cmath>

#include "foundation/math/vector.h"
#include "foundation/math/xform.h"

/// True when a and b are at most `tolerance` apart. NaN equals nothing; equal infinities are equal.
inline bool gfRealEq(double a, double b, double tolerance) {
    return a == b || std::fabs(a - b) <= tolerance;
}

/// True when both components agree within the absolute tolerance, each on its own.
inline bool gfRealEq(const gmVector<2>& a, const gmVector<2>& b, double tolerance) {
    return gfRealEq(a.x(), b.x(), tolerance) && gfRealEq(a.y(), b.y(), tolerance);
}

/// True when every matrix element and both translation components agree within the absolute tolerance.
inline bool gfRealEq(const gmXform<2>& a, const gmXform<2>& b, double tolerance) {
    for (std::size_t i = 0; i < a.values().size(); ++i)
        if (!gfRealEq(a.values()[i], b.values()[i], tolerance))
            return false;
    return true;
}
