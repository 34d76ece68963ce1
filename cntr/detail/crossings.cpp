#include "cntr/detail/crossings.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "cntr/detail/boxpairs.h"
#include "cntr/detail/chains.h"
#include "cntr/detail/edges.h"
#include "cntr/detail/runs.h"
#include "cntr/detail/tolerances.h"
#include "foundation/math/realeq.h"
#include "foundation/shapes/rect.h"

namespace {

using detail::Boxes;
using detail::Chain;
using detail::Crossed;
using detail::Crossing;
using detail::EdgeTree;
using detail::Eight;
using detail::EightPlaces;
using detail::Run;
using detail::Runs;

gmRect boxOf(const gmVector<2>& a, const gmVector<2>& b) {
    return gmRect(a, {}).enclose(gmRect(b, {}));
}

/// The segment that is asked about, or the edge that takes its place.
struct Segment {
    gmVector<2> from;
    gmVector<2> to;
    gmVector<2> along;

    Segment(const gmVector<2>& a, const gmVector<2>& b) : from(a), to(b), along(b - a) {}
};

/// Where the segment meets an edge whose box meets that of the segment.
std::optional<gmVector<2>> meeting(const Segment& seg, const gmVector<2>& start, const gmVector<2>& end,
                                   bool includeEndpointEdges) {
    const gmVector<2> direction = end - start;
    if (gfRealEq(start, end, detail::sameValue) || gfAreParallel(direction, seg.along))
        return {};
    const auto toEdge = [&](const gmVector<2>& v) { return gfDistToSeg(start, end, v); };
    if (!includeEndpointEdges && (toEdge(seg.from) <= detail::touching || toEdge(seg.to) <= detail::touching))
        return {};
    const gmVector<2> position = gfMeeting(start, direction, seg.from, seg.along);
    if (toEdge(position) < detail::touching && gfDistToSeg(seg.from, seg.to, position) < detail::touching)
        return position;
    return {};
}

/// What lies on a segment's line, or near enough to cross the segment. A crossing is within the tolerance of both, so
/// an edge that crosses comes within twice that of the line. What is added to that, in proportion to the distances that
/// come in, is far more than the errors of rounding.
class Strip {
  public:
    Strip(const Segment& seg, const detail::Extent& extent) : from_(seg.from), along_(seg.along) {
        const auto reach = [](double low, double high, double at) {
            return std::max(std::fabs(low - at), std::fabs(high - at));
        };
        const double length = std::fabs(along_.x()) + std::fabs(along_.y());
        const double reaches = reach(extent.low.x(), extent.high.x(), from_.x()) +
                               reach(extent.low.y(), extent.high.y(), from_.y()) + length;
        slack_ = length * (2.1 * detail::touching + 1e-13 * reaches);
    }

    /// How far to the left of the segment's line, times the segment's length.
    template <class Number>
    Number side(const Number& x, const Number& y) const {
        return along_.x() * (y - from_.y()) - along_.y() * (x - from_.x());
    }
    Eight side(const EightPlaces& v) const { return side(v.x, v.y); }

    /// Whether what is between these two sides may come near.
    template <class Number>
    auto isNear(const Number& least, const Number& most) const {
        return (least <= slack_) & (most >= -slack_);
    }

    bool isNear(const gmVector<2>& a, const gmVector<2>& b) const {
        const double sideA = side(a.x(), a.y());
        const double sideB = side(b.x(), b.y());
        return isNear(std::min(sideA, sideB), std::max(sideA, sideB));
    }

  private:
    gmVector<2> from_;
    gmVector<2> along_;
    double slack_;
};

/// The crossings of a segment: a question to the runs of a contour.
class Crossings {
  public:
    Crossings(const Segment& seg, bool includeEndpointEdges, const detail::Extent& extent)
        : seg_(seg),
          strip_(seg, extent),
          includeEndpointEdges_(includeEndpointEdges),
          low_(std::min(seg.from.x(), seg.to.x()), std::min(seg.from.y(), seg.to.y())),
          high_(std::max(seg.from.x(), seg.to.x()), std::max(seg.from.y(), seg.to.y())) {}

    std::vector<Crossing>& found() { return found_; }

    /// Whether the segment's box meets that of a contour.
    bool reaches(const detail::Extent& extent) const {
        return extent.low.x() <= high_.x() && extent.high.x() >= low_.x() && extent.low.y() <= high_.y() &&
               extent.high.y() >= low_.y();
    }

    unsigned opens(const Boxes& boxes) const {
        const EightPlaces low{Eight::load(boxes.lowX), Eight::load(boxes.lowY)};
        const EightPlaces high{Eight::load(boxes.highX), Eight::load(boxes.highY)};
        const unsigned meeting = meets(low, high);
        if (meeting == 0)
            return 0;
        const bool east = seg_.along.x() >= 0.0;
        const bool north = seg_.along.y() >= 0.0;
        const Eight least = strip_.side({north ? high.x : low.x, east ? low.y : high.y});
        const Eight most = strip_.side({north ? low.x : high.x, east ? high.y : low.y});
        return meeting & strip_.isNear(least, most).bits();
    }

    /// The edges of the run that the segment may cross.
    unsigned candidates(const Run& run) const {
        const auto a = EightPlaces::load(run.from);
        const auto b = EightPlaces::load(run.from + 1);
        const unsigned meeting =
            run.edges & meets({smaller(a.x, b.x), smaller(a.y, b.y)}, {larger(a.x, b.x), larger(a.y, b.y)});
        if (meeting == 0)
            return 0;
        const Eight sideA = strip_.side(a);
        const Eight sideB = strip_.side(b);
        return meeting & strip_.isNear(smaller(sideA, sideB), larger(sideA, sideB)).bits();
    }

    void look(const Run& run) {
        for (unsigned open = candidates(run); open != 0; open &= open - 1) {
            const std::size_t lane = detail::lowestBit(open);
            consider(run.from[lane], run.from[lane + 1], run.first + lane);
        }
    }

    void consider(const gmVector<2>& start, const gmVector<2>& end, std::size_t edge) {
        constexpr std::size_t few = 8;
        const auto position = meeting(seg_, start, end, includeEndpointEdges_);
        if (!position)
            return;
        if (found_.empty())
            found_.reserve(few);
        found_.push_back({*position, static_cast<int>(edge), (*position - seg_.from).dot(seg_.along)});
    }

  private:
    /// The boxes that meet the segment's.
    unsigned meets(const EightPlaces& low, const EightPlaces& high) const {
        return ((low.x <= high_.x()) & (high.x >= low_.x()) & (low.y <= high_.y()) & (high.y >= low_.y())).bits();
    }

    Segment seg_;
    Strip strip_;
    bool includeEndpointEdges_;
    gmVector<2> low_;
    gmVector<2> high_;
    std::vector<Crossing> found_;
};

/// Orders the crossings along the segment. Those at one place stand as exchanging every pair out of order leaves them;
/// where there are none, any sort gives the same.
void sortAlong(std::vector<Crossing>& crossings) {
    constexpr std::size_t few = 8;
    const auto before = [](const Crossing& a, const Crossing& b) { return a.key < b.key; };
    const auto sameKey = [](const Crossing& a, const Crossing& b) { return a.key == b.key; };
    const auto isNumber = [](const Crossing& c) { return !std::isnan(c.key); };
    if (crossings.size() > few && std::all_of(crossings.begin(), crossings.end(), isNumber)) {
        std::vector<Crossing> sorted = crossings;
        std::sort(sorted.begin(), sorted.end(), before);
        if (std::adjacent_find(sorted.begin(), sorted.end(), sameKey) == sorted.end()) {
            crossings.swap(sorted);
            return;
        }
    }
    for (std::size_t i = 0; i < crossings.size(); ++i)
        for (std::size_t j = i + 1; j < crossings.size(); ++j)
            if (crossings[i].key > crossings[j].key)
                std::swap(crossings[i], crossings[j]);
}

/// The tree of the contour, made for the moment where it has none.
class TreeOf {
  public:
    explicit TreeOf(const Crossed& contour) : tree_(contour.tree) {
        if (tree_)
            return;
        made_.build(contour.points, contour.closed);
        tree_ = &made_;
    }
    const EdgeTree& operator*() const { return *tree_; }

  private:
    const EdgeTree* tree_;
    EdgeTree made_;
};

/// The crossings of two contours without trees, which are small: every edge is asked about.
std::vector<gmVector<2>> crossingsOfFew(const Crossed& other, const Crossed& contour) {
    std::vector<gmVector<2>> positions;
    Runs runs(contour.points, contour.closed);
    detail::forEachEdge(other.points, other.closed, [&](const gmVector<2>& from, const gmVector<2>& to) {
        Crossings question(Segment(from, to), true, contour.extent);
        if (!question.reaches(contour.extent))
            return;
        runs.each([&](const Run& run) { question.look(run); });
        sortAlong(question.found());
        for (const Crossing& crossing : question.found())
            positions.push_back(crossing.position);
    });
    return positions;
}

/// Calls visit(edge, other), each a chain of one, for the edges that may cross and have no vertex in common, the one
/// with the lower number first, until it answers false.
template <class Visit>
bool eachClosePair(const Crossed& contour, Visit visit) {
    const detail::Chains made(contour.points, contour.closed);
    const std::vector<Chain>& chains = made.list();
    const auto consider = [&](const Chain& edge, const Chain& other) {
        const bool areNeighbours = other.first == edge.first + 1 ||
                                   (contour.closed && edge.first == 0 && other.first + 1 == contour.points.size());
        if (areNeighbours ||
            !Strip(Segment(edge.from[0], edge.from[1]), contour.extent).isNear(other.from[0], other.from[1]))
            return true;
        return visit(edge, other);
    };
    const auto between = [&](std::size_t i, std::size_t j) {
        return i == j || eachEdgePair(chains[i], chains[j], consider);
    };
    constexpr std::size_t few = 16;
    if (chains.size() <= few) {
        for (std::size_t i = 0; i < chains.size(); ++i)
            for (std::size_t j = i + 1; j < chains.size(); ++j)
                if (!between(i, j))
                    return false;
        return true;
    }
    std::vector<detail::Extent> boxes;
    boxes.reserve(chains.size());
    for (const Chain& chain : chains)
        boxes.push_back(chain.box());
    EdgeTree tree;
    tree.build(boxes);
    return detail::BoxPairs(tree, between).within(tree.levels() - 1, 0);
}

/// The boxes that meet the one around a group of boxes: a question to a tree.
class CloseTo {
  public:
    explicit CloseTo(const Boxes& group)
        : low_(smallest(Eight::load(group.lowX)), smallest(Eight::load(group.lowY))),
          high_(largest(Eight::load(group.highX)), largest(Eight::load(group.highY))) {}

    unsigned opens(const Boxes& boxes) const { return detail::meets(boxes, low_, high_); }

  private:
    gmVector<2> low_;
    gmVector<2> high_;
};

/// Appends what each edge of a run crosses in some runs of another contour.
void addCrossings(const Run& run, const std::vector<std::size_t>& others, Runs& runs, const detail::Extent& extent,
                  std::vector<gmVector<2>>& positions) {
    for (unsigned edges = run.edges; edges != 0; edges &= edges - 1) {
        const std::size_t lane = detail::lowestBit(edges);
        Crossings question(Segment(run.from[lane], run.from[lane + 1]), true, extent);
        for (const std::size_t other : others)
            question.look(runs.at(other));
        sortAlong(question.found());
        for (const Crossing& crossing : question.found())
            positions.push_back(crossing.position);
    }
}

}  // namespace

std::vector<Crossing> detail::crossingsOf(const gmLineSeg& seg, bool includeEndpointEdges, const Crossed& contour) {
    Crossings question(Segment(seg.p1(), seg.p2()), includeEndpointEdges, contour.extent);
    if (contour.extent.isTame && detail::isTame(seg.p1()) && detail::isTame(seg.p2())) {
        Runs runs(contour.points, contour.closed);
        askInOrder(contour.tree, runs, question);
    } else {
        const gmRect box = boxOf(seg.p1(), seg.p2());
        forEachEdge(contour.points.size(), contour.closed, [&](std::size_t from, std::size_t to, std::size_t edge) {
            if (boxOf(contour.points[from], contour.points[to]).overlaps(box))
                question.consider(contour.points[from], contour.points[to], edge);
        });
    }
    sortAlong(question.found());
    return std::move(question.found());
}

std::vector<gmVector<2>> detail::crossingsOfEdges(const Crossed& other, const Crossed& contour) {
    if (!other.tree && !contour.tree)
        return crossingsOfFew(other, contour);
    const TreeOf otherTree(other);
    const TreeOf ownTree(contour);
    std::vector<gmVector<2>> positions;
    Runs otherRuns(other.points, other.closed);
    Runs ownRuns(contour.points, contour.closed);
    std::vector<std::size_t> close[fanOut];  // to each run of a group, the runs of this contour
    for (std::size_t first = 0; first < otherRuns.count(); first += fanOut) {
        const Boxes& group = (*otherTree).boxes(0, first / fanOut);
        const CloseTo question(group);
        for (auto& runs : close)
            runs.clear();
        const auto look = [&](std::size_t own) {
            const Boxes& boxes = (*ownTree).boxes(0, own / fanOut);
            const std::size_t lane = own % fanOut;
            unsigned meeting =
                meets(group, {boxes.lowX[lane], boxes.lowY[lane]}, {boxes.highX[lane], boxes.highY[lane]});
            for (; meeting != 0; meeting &= meeting - 1)
                close[lowestBit(meeting)].push_back(own);
        };
        walkInOrder(*ownTree, (*ownTree).levels() - 1, 0, question, look);
        for (std::size_t i = 0; i < fanOut; ++i)
            if (!close[i].empty())
                addCrossings(otherRuns.at(first + i), close[i], ownRuns, contour.extent, positions);
    }
    return positions;
}

bool detail::crossesItself(const Crossed& contour) {
    const auto cross = [](const Chain& edge, const Chain& other) {
        const Segment seg(edge.from[0], edge.from[1]);
        return !gfRealEq(seg.from, seg.to, sameValue) && meeting(seg, other.from[0], other.from[1], false);
    };
    return !eachClosePair(
        contour, [&](const Chain& edge, const Chain& other) { return !cross(edge, other) && !cross(other, edge); });
}

std::vector<bool> detail::crossableEdges(const Crossed& contour) {
    std::vector<bool> crossable(contour.points.size(), false);
    std::size_t patience = 2 * contour.points.size();
    const bool areAllSeen = eachClosePair(contour, [&](const Chain& edge, const Chain& other) {
        crossable[edge.first] = true;
        crossable[other.first] = true;
        return --patience > 0;
    });
    if (!areAllSeen)
        crossable.assign(crossable.size(), true);
    return crossable;
}
