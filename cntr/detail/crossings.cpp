#include "cntr/detail/crossings.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <optional>
#include <utility>

#include "cntr/detail/edges.h"
#include "cntr/detail/runs.h"
#include "cntr/detail/tolerances.h"
#include "foundation/math/realeq.h"
#include "foundation/shapes/rect.h"

namespace {

using detail::Boxes;
using detail::Crossed;
using detail::Crossing;
using detail::EdgeTree;
using detail::Eight;
using detail::EightPlaces;
using detail::fanOut;
using detail::Run;
using detail::Runs;

bool isTame(const gmVector<2>& v) {
    return std::fabs(v.x()) <= 1e150 && std::fabs(v.y()) <= 1e150;
}

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

/// The crossings of a segment: a question to the runs of a contour.
class Crossings {
  public:
    Crossings(const Segment& seg, bool includeEndpointEdges, const detail::Extent& extent)
        : seg_(seg),
          includeEndpointEdges_(includeEndpointEdges),
          low_(std::min(seg.from.x(), seg.to.x()), std::min(seg.from.y(), seg.to.y())),
          high_(std::max(seg.from.x(), seg.to.x()), std::max(seg.from.y(), seg.to.y())) {
        // A crossing is within the tolerance of both, so its edge comes within twice that of the segment's line. What
        // is added to that, in proportion to the distances that come in, is far more than the errors of rounding.
        const auto reach = [](double low, double high, double at) {
            return std::max(std::fabs(low - at), std::fabs(high - at));
        };
        const double length = std::fabs(seg.along.x()) + std::fabs(seg.along.y());
        const double reaches = reach(extent.low.x(), extent.high.x(), seg.from.x()) +
                               reach(extent.low.y(), extent.high.y(), seg.from.y()) + length;
        slack_ = length * (2.1 * detail::touching + 1e-13 * reaches);
    }

    std::vector<Crossing>& found() { return found_; }

    unsigned opens(const Boxes& boxes) const {
        const EightPlaces low{Eight::load(boxes.lowX), Eight::load(boxes.lowY)};
        const EightPlaces high{Eight::load(boxes.highX), Eight::load(boxes.highY)};
        const bool east = seg_.along.x() >= 0.0;
        const bool north = seg_.along.y() >= 0.0;
        const Eight least = side({north ? high.x : low.x, east ? low.y : high.y});
        const Eight most = side({north ? low.x : high.x, east ? high.y : low.y});
        return mayMeet(low, high, least, most);
    }

    /// The edges of the run that the segment may cross.
    unsigned candidates(const Run& run) const {
        const auto a = EightPlaces::load(run.from);
        const auto b = EightPlaces::load(run.from + 1);
        const Eight sideA = side(a);
        const Eight sideB = side(b);
        return run.edges & mayMeet({smaller(a.x, b.x), smaller(a.y, b.y)}, {larger(a.x, b.x), larger(a.y, b.y)},
                                   smaller(sideA, sideB), larger(sideA, sideB));
    }

    void look(const Run& run) {
        for (unsigned open = candidates(run); open != 0; open &= open - 1) {
            const std::size_t lane = detail::lowestBit(open);
            consider(run.from[lane], run.from[lane + 1], run.first + lane);
        }
    }

    void consider(const gmVector<2>& start, const gmVector<2>& end, std::size_t edge) {
        if (const auto position = meeting(seg_, start, end, includeEndpointEdges_))
            found_.push_back({*position, static_cast<int>(edge), (*position - seg_.from).dot(seg_.along)});
    }

  private:
    /// How far to the left of the segment's line, times the segment's length.
    Eight side(const EightPlaces& v) const {
        return seg_.along.x() * (v.y - seg_.from.y()) - seg_.along.y() * (v.x - seg_.from.x());
    }

    unsigned mayMeet(const EightPlaces& low, const EightPlaces& high, const Eight& least, const Eight& most) const {
        return ((low.x <= high_.x()) & (high.x >= low_.x()) & (low.y <= high_.y()) & (high.y >= low_.y()) &
                (least <= slack_) & (most >= -slack_))
            .bits();
    }

    Segment seg_;
    bool includeEndpointEdges_;
    gmVector<2> low_;
    gmVector<2> high_;
    double slack_;
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

/// The boxes that have a place in common with the given one.
unsigned meets(const Boxes& boxes, const gmVector<2>& low, const gmVector<2>& high) {
    return ((Eight::load(boxes.lowX) <= high.x()) & (Eight::load(boxes.highX) >= low.x()) &
            (Eight::load(boxes.lowY) <= high.y()) & (Eight::load(boxes.highY) >= low.y()))
        .bits();
}

enum class Pairs { eAll, eOrdered };

/// Calls visit(i, j) for the runs i of one tree and j of another whose boxes meet, until it answers false; ordered, for
/// j >= i only.
template <class Visit>
class RunPairs {
  public:
    RunPairs(const EdgeTree& one, const EdgeTree& other, Pairs pairs, Visit visit)
        : one_(one), other_(other), pairs_(pairs), visit_(visit) {}

    /// Pairs of the groups `a` and `b` of one level.
    bool between(std::size_t level, std::size_t a, std::size_t b) {
        const Boxes& boxesA = one_.boxes(level, a);
        const Boxes& boxesB = other_.boxes(level, b);
        for (std::size_t lane = 0; lane < fanOut; ++lane) {
            unsigned open =
                meets(boxesB, {boxesA.lowX[lane], boxesA.lowY[lane]}, {boxesA.highX[lane], boxesA.highY[lane]});
            if (pairs_ == Pairs::eOrdered && a == b)
                open = open >> lane << lane;
            for (; open != 0; open &= open - 1) {
                const std::size_t i = a * fanOut + lane;
                const std::size_t j = b * fanOut + detail::lowestBit(open);
                if (!(level == 0 ? visit_(i, j) : between(level - 1, i, j)))
                    return false;
            }
        }
        return true;
    }

    /// All pairs. The deeper tree is gone down alone until both are on one level.
    bool all(const detail::Extent& extentOfOne, const detail::Extent& extentOfOther) {
        const std::size_t level = std::min(one_.levels(), other_.levels()) - 1;
        bool goesOn = true;
        eachGroup(one_, one_.levels() - 1, 0, level, extentOfOther, [&](std::size_t a) {
            eachGroup(other_, other_.levels() - 1, 0, level, extentOfOne,
                      [&](std::size_t b) { goesOn = goesOn && between(level, a, b); });
        });
        return goesOn;
    }

  private:
    /// The groups of a level that may meet an extent, from a group further up.
    template <class Take>
    static void eachGroup(const EdgeTree& tree, std::size_t level, std::size_t group, std::size_t wanted,
                          const detail::Extent& extent, Take take) {
        if (level == wanted) {
            take(group);
            return;
        }
        unsigned open = meets(tree.boxes(level, group), extent.low, extent.high);
        for (; open != 0; open &= open - 1)
            eachGroup(tree, level - 1, group * fanOut + detail::lowestBit(open), wanted, extent, take);
    }

    const EdgeTree& one_;
    const EdgeTree& other_;
    Pairs pairs_;
    Visit visit_;
};

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

/// A number for each run. Runs of one number, other than 0, follow each other and all run within one quadrant of
/// directions: they cross neither themselves nor each other.
std::vector<std::uint32_t> quadrantChains(Runs runs) {
    std::vector<std::uint32_t> chains;
    chains.reserve(runs.count());
    const auto isOneQuadrant = [](unsigned ways) { return (ways & 3U) != 0 && (ways & 12U) != 0; };
    unsigned ways = 0;  // in which the chain so far may run: right, left, up, down
    std::uint32_t chain = 0;
    runs.each([&](const Run& run) {
        const auto a = EightPlaces::load(run.from);
        const auto b = EightPlaces::load(run.from + 1);
        const auto all = [](const detail::EightBools& holds) { return holds.bits() == (1U << fanOut) - 1; };
        const unsigned here = (all(b.x >= a.x) ? 1U : 0U) | (all(b.x <= a.x) ? 2U : 0U) | (all(b.y >= a.y) ? 4U : 0U) |
                              (all(b.y <= a.y) ? 8U : 0U);
        const bool goesOn = isOneQuadrant(ways & here);
        chain += goesOn ? 0 : 1;
        ways = goesOn ? ways & here : here;
        chains.push_back(isOneQuadrant(here) ? chain : 0);
    });
    return chains;
}

}  // namespace

std::vector<Crossing> detail::crossingsOf(const gmLineSeg& seg, bool includeEndpointEdges, const Crossed& contour) {
    Crossings question(Segment(seg.p1(), seg.p2()), includeEndpointEdges, contour.extent);
    if (contour.extent.isTame && isTame(seg.p1()) && isTame(seg.p2())) {
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
    const TreeOf otherTree(other);
    const TreeOf ownTree(contour);
    using Pair = std::pair<std::uint32_t, std::uint32_t>;
    std::vector<Pair> pairs;
    RunPairs search(*otherTree, *ownTree, Pairs::eAll, [&](std::size_t i, std::size_t j) {
        pairs.emplace_back(static_cast<std::uint32_t>(i), static_cast<std::uint32_t>(j));
        return true;
    });
    search.all(other.extent, contour.extent);
    std::sort(pairs.begin(), pairs.end());

    std::vector<gmVector<2>> positions;
    Runs otherRuns(other.points, other.closed);
    Runs ownRuns(contour.points, contour.closed);
    for (auto pair = pairs.begin(); pair != pairs.end();) {
        const Run run = otherRuns.at(pair->first);
        const auto isOfAnother = [&](const Pair& p) { return p.first != pair->first; };
        const auto end = std::find_if(pair, pairs.end(), isOfAnother);
        for (unsigned edges = run.edges; edges != 0; edges &= edges - 1) {
            const std::size_t lane = lowestBit(edges);
            Crossings question(Segment(run.from[lane], run.from[lane + 1]), true, contour.extent);
            for (auto own = pair; own != end; ++own)
                question.look(ownRuns.at(own->second));
            sortAlong(question.found());
            for (const Crossing& crossing : question.found())
                positions.push_back(crossing.position);
        }
        pair = end;
    }
    return positions;
}

bool detail::crossesItself(const Crossed& contour) {
    const TreeOf tree(contour);
    Runs runs(contour.points, contour.closed);
    Runs otherRuns(contour.points, contour.closed);
    const std::vector<std::uint32_t> chains = quadrantChains(runs);
    const std::size_t n = contour.points.size();
    const auto areNeighbours = [&](std::size_t k, std::size_t m) {
        return m - k <= 1 || (contour.closed && k == 0 && m == n - 1);
    };
    const auto cross = [](const Segment& seg, const Segment& edge) {
        return meeting(seg, edge.from, edge.to, false).has_value();
    };
    // Edges that share a vertex touch each other's ends, and count for neither.
    RunPairs search(*tree, *tree, Pairs::eOrdered, [&](std::size_t i, std::size_t j) {
        if (chains[i] == chains[j] && chains[i] != 0)
            return true;
        const Run first = runs.at(i);
        const Run second = otherRuns.at(j);
        for (unsigned edges = first.edges; edges != 0; edges &= edges - 1) {
            const std::size_t lane = lowestBit(edges);
            const Segment seg(first.from[lane], first.from[lane + 1]);
            const Crossings question(seg, false, contour.extent);
            for (unsigned open = question.candidates(second); open != 0; open &= open - 1) {
                const std::size_t other = lowestBit(open);
                const std::size_t k = first.first + lane;
                const std::size_t m = second.first + other;
                if (m < k || areNeighbours(k, m))
                    continue;
                const Segment edge(second.from[other], second.from[other + 1]);
                if (cross(seg, edge) || cross(edge, seg))
                    return false;
            }
        }
        return true;
    });
    return !search.between((*tree).levels() - 1, 0, 0);
}
