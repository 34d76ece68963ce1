#pragma once

#include <vector>

#include "foundation/export.h"
#include "foundation/math/vector.h"

/// The vertices of the convex hull of `in`, counter-clockwise (in a y-up frame) from the one with the lowest x,
/// and the lowest y among those. Strictly convex: no repeated vertex, none in the middle of a side. Which way three
/// points turn is decided exactly (see gfOrientation).
///
/// One point gives one vertex, points on a line the two ends, no point nothing. Points with a coordinate that is
/// not finite take no part. `in` and `out` may be the same vector.
/// Cost: O(n log n); O(n) where few points lie near the hull, or all come in their order around it.
/// Method: the hull of a sample tells which points lie inside; Andrew's monotone chain (1979) for the others.
MOKSTD_API void gfConvexHull(const std::vector<gmVector<2>>& in, std::vector<gmVector<2>>& out);
