#include "cntr/detail/within.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <iterator>
#include <optional>

#include "cntr/detail/runs.h"

namespace {

// Far beyond this the cells of neighbouring doubles are far apart, and one step more still fits in 64 bits.
constexpr std::int64_t lastCell = std::int64_t{1} << 62;

/// The number of the cell that a scaled coordinate lies in: rounded, halves away from zero. Not for NaN.
std::int64_t cell(double scaled) {
    const auto last = static_cast<double>(lastCell);
    return static_cast<std::int64_t>(std::clamp(scaled >= 0.0 ? scaled + 0.5 : scaled - 0.5, -last, last));
}

constexpr std::size_t cellCount = 9;

/// The cell of a point and those next to it, numbered from 0 to 8: by column, and upwards in a column.
class Cells {
  public:
    Cells(const gmVector<2>& middle, double size)
        : scale_(1.0 / size), x_(cell(middle.x() * scale_) - 1), y_(cell(middle.y() * scale_) - 1) {}

    /// Rounding can put what is close to the point two cells away, where it is not looked for.
    std::optional<std::size_t> number(const gmVector<2>& v) const {
        // Unsigned: what lies before wraps around and is far behind.
        const std::uint64_t column = static_cast<std::uint64_t>(cell(v.x() * scale_)) - static_cast<std::uint64_t>(x_);
        const std::uint64_t row = static_cast<std::uint64_t>(cell(v.y() * scale_)) - static_cast<std::uint64_t>(y_);
        if (column > 2 || row > 2)
            return {};
        return 3 * column + row;
    }

  private:
    double scale_;
    std::int64_t x_;
    std::int64_t y_;
};

struct Found {
    int index;
    std::size_t cell;
};

/// The vertices within a tolerance of a point: a question to the runs of a contour.
class Within {
  public:
    Within(double tolerance, const gmVector<2>& point)
        : tolerance_(tolerance),
          point_(point),
          limit_(std::min(detail::sameRoot(tolerance), detail::unlimited)),
          sure_(tolerance * tolerance * (1.0 - 2e-15) - 1e-300) {
        const bool areCells = std::isfinite(tolerance) && std::isfinite(1.0 / tolerance);
        if (areCells && !std::isnan(point.x()) && !std::isnan(point.y()))
            cells_.emplace(point, tolerance);
    }

    unsigned opens(const detail::Boxes& boxes) const { return (squaresTo(boxes, point_) <= limit_).bits(); }

    void look(const detail::Run& run) {
        const auto places = detail::EightPlaces::load(run.own);
        const detail::Eight x = places.x - point_.x();
        const detail::Eight y = places.y - point_.y();
        const detail::Eight squares = x * x + y * y;
        unsigned near = (squares <= limit_).bits() & run.vertices;
        if (near == 0)
            return;
        if ((near & ~(squares <= sure_).bits()) != 0)
            near = (squareRoot(squares) < tolerance_).bits() & run.vertices;
        for (; near != 0; near &= near - 1) {
            const unsigned lane = detail::lowestBit(near);
            const std::optional<std::size_t> cell = cells_ ? cells_->number(run.own[lane]) : 0;
            if (cell)
                add({static_cast<int>(run.first + lane), *cell});
        }
    }

    /// By cell; within a cell as they were found, which is by index.
    std::vector<int> found() const {
        std::size_t starts[cellCount + 1] = {};
        forEachFound([&](const Found& vertex) { ++starts[vertex.cell + 1]; });
        for (std::size_t i = 1; i < cellCount; ++i)
            starts[i] += starts[i - 1];
        std::vector<int> indices(foundCount_);
        forEachFound([&](const Found& vertex) { indices[starts[vertex.cell]++] = vertex.index; });
        return indices;
    }

  private:
    // As many as most questions find stand in the object itself.
    void add(const Found& vertex) {
        if (foundCount_ < std::size(firstFound_))
            firstFound_[foundCount_] = vertex;
        else
            moreFound_.push_back(vertex);
        ++foundCount_;
    }
    template <class Visit>
    void forEachFound(Visit visit) const {
        std::for_each(firstFound_, firstFound_ + std::min(foundCount_, std::size(firstFound_)), visit);
        std::for_each(moreFound_.begin(), moreFound_.end(), visit);
    }

    double tolerance_;
    gmVector<2> point_;
    double limit_;                // squares above this are too far
    double sure_;                 // up to this, near enough; none so small that they round coarsely
    std::optional<Cells> cells_;  // none of a size that cannot be numbered
    std::size_t foundCount_ = 0;
    Found firstFound_[2 * detail::fanOut];
    std::vector<Found> moreFound_;
};

}  // namespace

std::vector<int> detail::verticesWithin(double tolerance, const gmVector<2>& point,
                                        const std::vector<gmVector<2>>& points, bool closed, const EdgeTree* tree) {
    if (!(tolerance > 0.0))
        return {};
    Within question(tolerance, point);
    Runs runs(points, closed);
    askInOrder(tree, runs, question);
    return question.found();
}
