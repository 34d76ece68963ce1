#pragma once

#include <cmath>
#include <limits>

#include "foundation/export.h"
#include "foundation/math/vector.h"

namespace detail {
/// What gfOrientation answers where rounding leaves it open.
MOKSTD_API int exactOrientation(const gmVector<2>& a, const gmVector<2>& b, const gmVector<2>& c);
}  // namespace detail

/// +1 when a, b, c turn left (counter-clockwise in a y-up frame), -1 when they turn right, 0 when they lie on one
/// line: the sign of (b - a) x (c - a), decided exactly, whatever the rounding. Exact while the coordinates that
/// are not 0 lie between 1e-140 and 1e140 in magnitude; beyond, some sign. 0 with a NaN.
///
/// Method: a rounded determinant with an error bound, then the exact sum of its terms (after Dekker 1971 and
/// Shewchuk 1997).
inline int gfOrientation(const gmVector<2>& a, const gmVector<2>& b, const gmVector<2>& c) {
    const double left = (b.x() - a.x()) * (c.y() - a.y());
    const double right = (b.y() - a.y()) * (c.x() - a.x());
    const double rounded = left - right;
    const double uncertainty = 4.0 * std::numeric_limits<double>::epsilon() * (std::fabs(left) + std::fabs(right));
    if (rounded > uncertainty)
        return 1;
    if (rounded < -uncertainty)
        return -1;
    return detail::exactOrientation(a, b, c);
}
