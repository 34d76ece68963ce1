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
    RayToTheRight(const gmVector<2>& p, const std::vector<gmVector<2>>& points)
        : p_(p), points_(points), runs_(points, true) {
        // The sine of half a step, up to a sixth of pi, is more than 0.95 times that.
        constexpr double perVertex = clearOfVertices * 2.0 / (0.95 * pi);
        radius_ = perVertex * static_cast<double>(points.size()) + clearOfEdges;
        before_ = detail::loadTwo(p) - detail::both(radius_);
        beyond_ = detail::loadTwo(p) + detail::both(radius_);
    }

    bool isTooClose() const { return isTooClose_; }
    bool isOdd() const { return isOdd_; }

    void crossAll(const detail::EdgeTree& tree) { walk(tree, tree.levels() - 1, 0); }

    /// The same without a tree: the boxes of the runs are made on the way.
    void crossAll() {
        if (points_.size() <= detail::EdgeIndex::scanAtMost)
            runs_.each([&](const Run& run) { look(run); });
        else
            runs_.each([&](const Run& run) { cross(run, detail::Corners::of(run)); });
    }
    /// The same with what encloses all vertices.
    detail::Extent crossAllAndLearn() {
        detail::GrowingExtent all;
        runs_.each([&](const Run& run) {
            detail::GrowingExtent here{{detail::loadTwo(run.from[0]), detail::loadTwo(run.from[0])}, detail::both(0.0)};
            for (std::size_t i = 1; i <= fanOut; ++i)
                here.extend(detail::loadTwo(run.from[i]));
            all.extend(here);
            cross(run, here.corners);
        });
        return all.extent();
    }

  private:
    void walk(const detail::EdgeTree& tree, std::size_t level, std::size_t group) {
        const Boxes& boxes = tree.boxes(level, group);
        const unsigned begun = (Eight::load(boxes.lowX) <= p_.x() + radius_).bits();
        const unsigned inReach =
            ((Eight::load(boxes.lowY) <= p_.y() + radius_) & (Eight::load(boxes.highY) >= p_.y() - radius_) &
             (Eight::load(boxes.highX) >= p_.x() - radius_))
                .bits();
        for (unsigned right = inReach & ~begun; right != 0; right &= right - 1)
            settle(level, group * fanOut + detail::lowestBit(right));
        for (unsigned around = inReach & begun; around != 0 && !isTooClose_; around &= around - 1) {
            const std::size_t box = group * fanOut + detail::lowestBit(around);
            if (level == 0)
                look(runs_.at(box));
            else
                walk(tree, level - 1, box);
        }
    }

    void cross(const Run& run, const detail::Corners& box) {
        const unsigned begun = bits(box.low <= beyond_);
        const unsigned goesOn = bits(before_ <= box.high);
        constexpr unsigned x = 1;
        constexpr unsigned y = 2;
        if ((begun & goesOn & y) == 0 || (goesOn & x) == 0)
            return;
        if ((begun & x) != 0)
            look(run);
        else
            settle(0, run.first / fanOut);
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
        const auto nearVertex = end.x * end.x + end.y * end.y <= radius_ * radius_;
        const unsigned mayBeNear = (nearLine | nearVertex).bits() & run.edges;
        if (mayBeNear != 0) {
            const auto nearBox = (smaller(start.x, end.x) <= clearOfEdges) & (larger(start.x, end.x) >= -clearOfEdges) &
                                 (smaller(start.y, end.y) <= clearOfEdges) & (larger(start.y, end.y) >= -clearOfEdges);
            if ((mayBeNear & (nearBox | nearVertex).bits()) != 0) {
                isTooClose_ = true;
                return;
            }
        }
        const unsigned startAbove = (start.y > 0.0).bits();
        const unsigned endAbove = (end.y > 0.0).bits();
        // p is to the left of an edge that goes up, to the right of one that goes down: the crossing is to its right.
        const unsigned left = (span > 0.0).bits();
        const unsigned crossed = (startAbove ^ endAbove) & ~(left ^ endAbove) & run.edges;
        isOdd_ ^= __builtin_parity(crossed) != 0;
    }

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
    detail::Runs runs_;
    double radius_;  // within which no vertex may be
    detail::Two before_;
    detail::Two beyond_;
    bool isTooClose_ = false;
    bool isOdd_ = false;
};

}  // namespace

bool detail::isClearOfEnd(const gmVector<2>& p, const gmVector<2>& first, const Extent& extent, double radius) {
    // Nothing is farther from p than the farthest corner, nor than twice the radius when the first vertex is within it.
    // The margin covers the tolerance at the ray's end, and rounding.
    const double reach = radius - 10.0 * touching;
    const auto isShorter = [](const gmVector<2>& v, double than) { return v.dot(v) < than * than; };
    const gmVector<2> across(std::max(p.x() - extent.low.x(), extent.high.x() - p.x()),
                             std::max(p.y() - extent.low.y(), extent.high.y() - p.y()));
    return reach > 0.0 && (isShorter(across, radius + reach) || isShorter(p - first, reach));
}

bool detail::isClearOfEnd(const gmVector<2>& p, const gmVector<2>& first, const Extent& extent) {
    const double radius = std::max({first.x() - extent.low.x(), extent.high.x() - first.x(), first.y() - extent.low.y(),
                                    extent.high.y() - first.y()});
    return isClearOfEnd(p, first, extent, radius);
}

std::optional<bool> detail::isInsideEvenOdd(const gmVector<2>& p, const std::vector<gmVector<2>>& points,
                                            EdgeIndex& index) {
    if (points.size() < 3)
        return {};
    RayToTheRight ray(p, points);
    if (const EdgeTree* const tree = index.forOne(points, true))
        ray.crossAll(*tree);
    else if (index.hasExtent())
        ray.crossAll();
    else
        index.learnExtent(ray.crossAllAndLearn());
    const Extent& extent = index.extent(points);
    const bool areSmall = extent.low.x() > -coordinateLimit && extent.low.y() > -coordinateLimit &&
                          extent.high.x() < coordinateLimit && extent.high.y() < coordinateLimit;
    if (!extent.isTame || !areSmall || ray.isTooClose())
        return {};
    return ray.isOdd();
}
