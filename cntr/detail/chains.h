#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>

#include "cntr/detail/edgetree.h"
#include "cntr/detail/runs.h"
#include "foundation/math/lanes.h"
#include "foundation/math/vector.h"

namespace detail {

/// A stretch of consecutive edges that all run within one quadrant of directions, so that neither coordinate turns
/// back. The box of any part of it is that of the part's two end vertices; and its edges do not cross each other: the
/// boxes of two that are no neighbours meet only where all vertices between them are at one place, which is then an end
/// of both.
struct Chain {
    const gmVector<2>* from;  // edge first + i joins from[i] to from[i + 1]
    std::size_t first;
    std::size_t edges;

    Chain front(std::size_t count) const { return {from, first, count}; }
    Chain without(std::size_t count) const { return {from + count, first + count, edges - count}; }

    Corners corners() const {
        const Two a = loadTwo(from[0]);
        const Two b = loadTwo(from[edges]);
        return {smaller(a, b), larger(a, b)};
    }
    Extent box() const {
        const gmVector<2>& a = from[0];
        const gmVector<2>& b = from[edges];
        return {{std::min(a.x(), b.x()), std::min(a.y(), b.y())}, {std::max(a.x(), b.x()), std::max(a.y(), b.y())}};
    }
};

/// The edges of a contour with tame coordinates as chains, in their order.
class Chains {
  public:
    Chains(const std::vector<gmVector<2>>& points, bool closed)
        : closing_{points.empty() ? gmVector<2>() : points.back(), points.empty() ? gmVector<2>() : points.front()} {
        if (points.empty())
            return;
        if (closed)
            list_.push_back({closing_, 0, 1});
        split({points.data(), closed ? std::size_t{1} : std::size_t{0}, points.size() - 1});
    }
    Chains(const Chains&) = delete;
    Chains& operator=(const Chains&) = delete;

    const std::vector<Chain>& list() const { return list_; }

  private:
    /// Where the edges go: to the right or straight up 1, upwards or straight across 2, and 4 and 8 the other way.
    static unsigned waysOf(const gmVector<2>* from, std::size_t edges) {
        Two at = loadTwo(from[0]);
        Two next = loadTwo(from[1]);
        TwoBools rises = at <= next;
        TwoBools falls = next <= at;
        for (std::size_t i = 2; i <= edges; ++i) {
            at = next;
            next = loadTwo(from[i]);
            rises = rises & (at <= next);
            falls = falls & (next <= at);
        }
        return bits(rises) | bits(falls) << 2;
    }

    static bool isOneQuadrant(unsigned ways) { return (ways & 5U) != 0 && (ways & 10U) != 0; }

    /// The longest chain at the beginning of the edges, by strides that double until one goes too far, and then halve.
    static std::size_t longest(const Chain& edges) {
        std::size_t length = 0;
        std::size_t limit = 16;
        unsigned ways = 15;
        for (std::size_t stride = 1; stride > 0;) {
            const bool isThere = length + stride <= edges.edges;
            const unsigned here = isThere ? ways & waysOf(edges.from + length, stride) : 0;
            if (isOneQuadrant(here)) {
                ways = here;
                length += stride;
                stride = std::min(2 * stride, limit);
            } else {
                limit = stride /= 2;
            }
        }
        return length;
    }

    void split(Chain edges) {
        while (edges.edges > 0) {
            const std::size_t length = longest(edges);
            list_.push_back(edges.front(length));
            edges = edges.without(length);
        }
    }

    gmVector<2> closing_[2];
    std::vector<Chain> list_;
};

/// Calls visit(edge, other), each a chain of one, for the edges of two chains whose boxes meet, until it answers false.
template <class Visit>
bool eachEdgePair(const Chain& a, const Chain& b, Visit& visit) {
    const Corners boxA = a.corners();
    const Corners boxB = b.corners();
    if (bits((boxA.low <= boxB.high) & (boxB.low <= boxA.high)) != 3)
        return true;
    if (a.edges > 1 && a.edges >= b.edges) {
        const std::size_t half = a.edges / 2;
        return eachEdgePair(a.front(half), b, visit) && eachEdgePair(a.without(half), b, visit);
    }
    if (b.edges > 1) {
        const std::size_t half = b.edges / 2;
        return eachEdgePair(a, b.front(half), visit) && eachEdgePair(a, b.without(half), visit);
    }
    return visit(a, b);
}

}  // namespace detail
