#pragma once

#include <optional>
#include <vector>

#include "cntr/detail/edgetree.h"
#include "foundation/math/vector.h"

namespace detail {

/// Whether the end of any ray from p that is as long as gmRegion::inside says is beyond every edge, with
/// `radius` the largest distance from the first vertex to another, or less than that.
bool isClearOfEnd(const gmVector<2>& p, const gmVector<2>& first, const Extent& extent, double radius);
/// The same, told from the extent alone: every side of it has a vertex.
bool isClearOfEnd(const gmVector<2>& p, const gmVector<2>& first, const Extent& extent);

/// Whether p is inside a closed outline: whether the ray that gmRegion::inside describes crosses it an odd number of
/// times, where that can be told without the ray, and nothing where it cannot.
///
/// Any ray that meets no vertex crosses an outline as many times as any other, but for an even number. So the parity of
/// one to the right will do, provided that the procedure counts each crossing of its own ray once:
/// - no edge is so close to p that the procedure would leave it out, or that the side on which p lies would be
/// rounding's;
/// - no vertex is so close that the ray, which keeps half of pi / n from the direction to each, could touch it;
/// - the ray's end is beyond every edge, which is for the caller to see to;
/// - coordinates are small enough for rounding to be well below these tolerances.
/// Then what is wholly to the right of p is settled by its two ends, and only boxes around p are opened.
/// A first question learns the extent of the outline on the way.
std::optional<bool> isInsideEvenOdd(const gmVector<2>& p, const std::vector<gmVector<2>>& points, EdgeIndex& index);

}  // namespace detail
