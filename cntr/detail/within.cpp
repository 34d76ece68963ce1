#include "cntr/detail/within.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <tuple>

#include "cntr/detail/runs.h"

namespace {

/// The vertices within a tolerance of a point: a question to the runs of a contour.
class Within {
  public:
    Within(double tolerance, const gmVector<2>& point)
        : tolerance_(tolerance), point_(point), limit_(std::min(detail::sameRoot(tolerance), detail::unlimited)) {}

    unsigned opens(const detail::Boxes& boxes) const { return (squaresTo(boxes, point_) <= limit_).bits(); }

    void look(const detail::Run& run) {
        const auto places = detail::EightPlaces::load(run.own);
        const detail::Eight x = places.x - point_.x();
        const detail::Eight y = places.y - point_.y();
        for (unsigned near = (x * x + y * y <= limit_).bits() & run.vertices; near != 0; near &= near - 1) {
            const unsigned lane = detail::lowestBit(near);
            if (run.own[lane].distance(point_) < tolerance_)
                found_.push_back(static_cast<int>(run.first + lane));
        }
    }

    /// In ascending order.
    std::vector<int>& found() { return found_; }

  private:
    double tolerance_;
    gmVector<2> point_;
    double limit_;
    std::vector<int> found_;
};

// Far beyond this the cells of neighbouring doubles are far apart, and one step more still fits in 64 bits.
constexpr std::int64_t lastCell = std::int64_t{1} << 62;

/// The number of the cell that a scaled coordinate lies in: rounded, halves away from zero. No vertex that is within a
/// tolerance of anything has a NaN here.
std::int64_t cell(double scaled) {
    const double rounded = std::trunc(scaled >= 0.0 ? scaled + 0.5 : scaled - 0.5);
    const auto last = static_cast<double>(lastCell);
    return static_cast<std::int64_t>(std::clamp(rounded, -last, last));
}

struct Found {
    std::int64_t x;
    std::int64_t y;
    int index;
};

/// Keeps what lies in the cell of the point or one next to it, and orders it by cell. Rounding can put what is close to
/// the point two cells away.
void orderByCell(std::vector<int>& found, const std::vector<gmVector<2>>& points, const gmVector<2>& point,
                 double tolerance) {
    const double scale = 1.0 / tolerance;
    const std::int64_t x = cell(point.x() * scale);
    const std::int64_t y = cell(point.y() * scale);
    std::vector<Found> kept;
    kept.reserve(found.size());
    for (const int index : found) {
        const gmVector<2> scaled = points[static_cast<std::size_t>(index)] * scale;
        const Found entry{cell(scaled.x()), cell(scaled.y()), index};
        if (x - 1 <= entry.x && entry.x <= x + 1 && y - 1 <= entry.y && entry.y <= y + 1)
            kept.push_back(entry);
    }
    const auto before = [](const Found& a, const Found& b) {
        return std::tie(a.x, a.y, a.index) < std::tie(b.x, b.y, b.index);
    };
    std::sort(kept.begin(), kept.end(), before);
    found.resize(kept.size());
    std::transform(kept.begin(), kept.end(), found.begin(), [](const Found& entry) { return entry.index; });
}

}  // namespace

std::vector<int> detail::verticesWithin(double tolerance, const gmVector<2>& point,
                                        const std::vector<gmVector<2>>& points, bool closed, const EdgeTree* tree) {
    if (!(tolerance > 0.0))
        return {};
    Within question(tolerance, point);
    askInOrder(tree, Runs(points, closed), question);
    std::vector<int>& found = question.found();
    const bool hasCells = std::isfinite(tolerance) && std::isfinite(1.0 / tolerance);
    if (hasCells && !found.empty())
        orderByCell(found, points, point, tolerance);
    return std::move(found);
}
