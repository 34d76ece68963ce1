#include "cntr/detail/evenodd.h"

#include <algorithm>
#include <cmath>

#include "cntr/detail/runs.h"
#include "cntr/detail/tolerances.h"

namespace {

using detail::Boxes;
using detail::Eight;
using detail::EightPlaces;
using detail::fanOut;
using detail::Run;

constexpr double pi = 3.141592653589793;

// The largest coordinate for which the tolerances are far above rounding.
constexpr double coordinateLimit = 1e6;
// How far an edge has to be: the procedure leaves out what is within the tolerance, and rounding is to have no say.
constexpr double clearOfEdges = 5.0 * detail::touching;
// How far the ray has to pass from every vertex: the tolerance and a little.
constexpr double clearOfVertices = 1.05 * detail::touching;

/// Counts the edges that a ray to the right crosses, and notices what is too close: a question to the runs of a closed
/// outline.
class RayToTheRight {
  public:
    RayToTheRight(const gmVector<2>& p, const std::vector<gmVector<2>>& points) : p_(p), points_(points) {
        const double halfStep = 0.5 * pi / static_cast<double>(points.size());
        const double noMoreThanItsSine = halfStep * (1.0 - halfStep * halfStep / 6.0);
        radius_ = clearOfVertices / noMoreThanItsSine + clearOfEdges;
        square_ = radius_ * radius_;
    }

    bool isTooClose() const { return isTooClose_; }
    bool isOdd() const { return isOdd_; }

    void walk(const detail::EdgeTree& tree, std::size_t level, std::size_t index, detail::Runs& runs) {
        const Boxes& boxes = tree.boxes(level, index);
        const Eight lowX = Eight::load(boxes.lowX);
        const unsigned around =
            ((Eight::load(boxes.lowY) <= p_.y() + radius_) & (Eight::load(boxes.highY) >= p_.y() - radius_) &
             (Eight::load(boxes.highX) >= p_.x() - radius_))
                .bits();
        const unsigned right = around & (lowX > p_.x() + radius_).bits();
        for (unsigned rest = right; rest != 0; rest &= rest - 1)
            settle(level, index * fanOut + detail::lowestBit(rest));
        for (unsigned open = around & ~right; open != 0 && !isTooClose_; open &= open - 1) {
            const std::size_t child = index * fanOut + detail::lowestBit(open);
            if (level == 0)
                look(runs.at(child));
            else
                walk(tree, level - 1, child, runs);
        }
    }

    void look(const Run& run) {
        const auto from = EightPlaces::load(run.from);
        const auto to = EightPlaces::load(run.from + 1);
        const EightPlaces start{from.x - p_.x(), from.y - p_.y()};
        const EightPlaces end{to.x - p_.x(), to.y - p_.y()};
        const EightPlaces along{to.x - from.x, to.y - from.y};
        // Twice the area that the edge and p span: the distance from the edge's line times the edge's length.
        const Eight span = start.x * along.y - start.y * along.x;
        const Eight length = along.x * along.x + along.y * along.y;
        const auto nearLine = span * span <= (1.1 * clearOfEdges) * (1.1 * clearOfEdges) * length;
        const auto nearBox = (smaller(start.x, end.x) <= clearOfEdges) & (larger(start.x, end.x) >= -clearOfEdges) &
                             (smaller(start.y, end.y) <= clearOfEdges) & (larger(start.y, end.y) >= -clearOfEdges);
        const auto nearVertex = end.x * end.x + end.y * end.y <= square_;
        if ((((nearLine & nearBox).bits() | nearVertex.bits()) & run.edges) != 0) {
            isTooClose_ = true;
            return;
        }
        const unsigned startAbove = (start.y > 0.0).bits();
        const unsigned endAbove = (end.y > 0.0).bits();
        // p is to the left of an edge that goes up, to the right of one that goes down: the crossing is to its right.
        const unsigned left = (span > 0.0).bits();
        const unsigned crossed = (startAbove ^ endAbove) & ~(left ^ endAbove) & run.edges;
        for (unsigned rest = crossed; rest != 0; rest &= rest - 1)
            isOdd_ = !isOdd_;
    }

  private:
    /// All the edges under the box are to the right: of those that go up and those that go down past p there are as
    /// many, or one more, as the ends of the stretch tell.
    void settle(std::size_t level, std::size_t box) {
        const std::size_t first = box << (3 * (level + 1));
        const std::size_t last = std::min(((box + 1) << (3 * (level + 1))) - 1, points_.size() - 1);
        const gmVector<2>& start = points_[first > 0 ? first - 1 : points_.size() - 1];
        if ((start.y() > p_.y()) != (points_[last].y() > p_.y()))
            isOdd_ = !isOdd_;
    }

    gmVector<2> p_;
    const std::vector<gmVector<2>>& points_;
    double radius_;
    double square_;
    bool isTooClose_ = false;
    bool isOdd_ = false;
};

}  // namespace

std::optional<bool> detail::isInsideEvenOdd(const gmVector<2>& p, const std::vector<gmVector<2>>& points, double radius,
                                            const Extent& extent, const EdgeTree* tree) {
    const bool areSmall = extent.low.x() > -coordinateLimit && extent.low.y() > -coordinateLimit &&
                          extent.high.x() < coordinateLimit && extent.high.y() < coordinateLimit;
    // A margin covers the tolerance at the ray's end, and rounding.
    const bool isAllWithinReach = p.distance(points.front()) < radius - 10.0 * touching;
    if (!extent.isTame || !areSmall || !isAllWithinReach || points.size() < 3)
        return {};
    Runs runs(points, true);
    RayToTheRight ray(p, points);
    if (tree)
        ray.walk(*tree, tree->levels() - 1, 0, runs);
    else
        runs.each([&](const Run& run) {
            if (!ray.isTooClose())
                ray.look(run);
        });
    if (ray.isTooClose())
        return {};
    return ray.isOdd();
}
