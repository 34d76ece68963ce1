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
            if (run.own[lane].distance(point_) < tolerance_) {
                if (found_.empty())
                    found_.reserve(detail::fanOut);
                found_.push_back(static_cast<int>(run.first + lane));
            }
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
    const auto last = static_cast<double>(lastCell);
    return static_cast<std::int64_t>(std::clamp(scaled >= 0.0 ? scaled + 0.5 : scaled - 0.5, -last, last));
}

struct Cell {
    std::int64_t x;
    std::int64_t y;

    Cell(const gmVector<2>& v, double scale) : x(cell(v.x() * scale)), y(cell(v.y() * scale)) {}

    bool isNextTo(const Cell& other) const {
        return other.x - 1 <= x && x <= other.x + 1 && other.y - 1 <= y && y <= other.y + 1;
    }
};

/// Keeps what lies in the cell of the point or one next to it, and orders it by cell. Rounding can put what is close to
/// the point two cells away.
void orderByCell(std::vector<int>& found, const std::vector<gmVector<2>>& points, const gmVector<2>& point,
                 double tolerance) {
    const double scale = 1.0 / tolerance;
    const Cell middle(point, scale);
    const auto cellOf = [&](int index) { return Cell(points[static_cast<std::size_t>(index)], scale); };
    const auto isApart = [&](int index) { return !cellOf(index).isNextTo(middle); };
    found.erase(std::remove_if(found.begin(), found.end(), isApart), found.end());
    std::sort(found.begin(), found.end(), [&](int a, int b) {
        const Cell first = cellOf(a);
        const Cell second = cellOf(b);
        return std::tie(first.x, first.y, a) < std::tie(second.x, second.y, b);
    });
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
    if (hasCells)
        orderByCell(found, points, point, tolerance);
    return std::move(found);
}
