#pragma once

#include <cstdint>
#include <vector>

#include "cntr/export.h"
#include "foundation/math/vector.h"

namespace detail {

/// The vertices of a contour sorted into square cells of one tolerance, for looking up those near a point.
class MOKCNTR_API VertexGrid {
  public:
    VertexGrid(const std::vector<gmVector<2>>& points, double tolerance);

    double tolerance() const { return tolerance_; }

    /// The indices of the points closer than the tolerance to `point`, in the order of their cells (x, then y) and by
    /// index within a cell. `points` are those the grid was made of.
    std::vector<int> near(const std::vector<gmVector<2>>& points, const gmVector<2>& point) const;

    /// Whether cells of that size can be numbered at all.
    static bool hasCells(double tolerance);

  private:
    struct Entry {
        std::int64_t x;
        std::int64_t y;
        int index;
    };

    double tolerance_;
    std::vector<Entry> entries_;  // by x, then y, then index
};

}  // namespace detail
