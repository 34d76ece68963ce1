#pragma once

#include "foundation/export.h"
#include "foundation/math/vector.h"

/// +1 when a, b, c turn left (counter-clockwise in a y-up frame), -1 when they turn right, 0 when they lie on one
/// line: the sign of (b - a) x (c - a), decided exactly, whatever the rounding. Exact while the coordinates that
/// are not 0 lie between 1e-140 and 1e140 in magnitude; beyond, some sign. 0 with a NaN.
///
/// Method: a rounded determinant with an error bound, then the exact sum of its terms (after Dekker 1971 and
/// Shewchuk 1997).
MOKSTD_API int gfOrientation(const gmVector<2>& a, const gmVector<2>& b, const gmVector<2>& c);
