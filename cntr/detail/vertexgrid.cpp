#include "cntr/detail/vertexgrid.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace {

// Far beyond this the cells of neighbouring doubles are far apart, and one step more still fits in 64 bits.
constexpr std::int64_t lastCell = std::int64_t{1} << 62;

/// The number of the cell that a scaled coordinate lies in: rounded, halves away from zero. NaN lies in none.
std::int64_t cell(double scaled) {
    const double rounded = std::trunc(scaled >= 0.0 ? scaled + 0.5 : scaled - 0.5);
    const auto last = static_cast<double>(lastCell);
    return static_cast<std::int64_t>(std::clamp(rounded, -last, last));
}

bool isInCell(double scaledX, double scaledY) {
    return !std::isnan(scaledX) && !std::isnan(scaledY);
}

}  // namespace

bool detail::VertexGrid::hasCells(double tolerance) {
    return tolerance > 0.0 && std::isfinite(tolerance) && std::isfinite(1.0 / tolerance);
}

detail::VertexGrid::VertexGrid(const std::vector<gmVector<2>>& points, double tolerance) : tolerance_(tolerance) {
    const gmVector<2>* const first = points.data();
    entries_.reserve(points.size());
    for (const gmVector<2>& point : points) {
        const gmVector<2> scaled = point * (1.0 / tolerance);
        if (isInCell(scaled.x(), scaled.y()))
            entries_.push_back({cell(scaled.x()), cell(scaled.y()), static_cast<int>(&point - first)});
    }
    std::sort(entries_.begin(), entries_.end(),
              [](const Entry& a, const Entry& b) { return std::tie(a.x, a.y, a.index) < std::tie(b.x, b.y, b.index); });
}

std::vector<int> detail::VertexGrid::near(const std::vector<gmVector<2>>& points, const gmVector<2>& point) const {
    std::vector<int> found;
    const gmVector<2> scaled = point * (1.0 / tolerance_);
    if (!isInCell(scaled.x(), scaled.y()))
        return found;
    const std::int64_t x = cell(scaled.x());
    const std::int64_t y = cell(scaled.y());
    for (std::int64_t column = x - 1; column <= x + 1; ++column) {
        auto entry = std::lower_bound(entries_.begin(), entries_.end(), std::pair(column, y - 1),
                                      [](const Entry& e, const std::pair<std::int64_t, std::int64_t>& from) {
                                          return std::tie(e.x, e.y) < std::tie(from.first, from.second);
                                      });
        for (; entry != entries_.end() && entry->x == column && entry->y <= y + 1; ++entry)
            if (points[static_cast<std::size_t>(entry->index)].distance(point) < tolerance_)
                found.push_back(entry->index);
    }
    return found;
}
