#pragma once

#include <cstddef>

#include "cntr/detail/edgetree.h"
#include "cntr/detail/runs.h"
#include "foundation/math/lanes.h"
#include "foundation/math/vector.h"

namespace detail {

/// The boxes that have a place in common with the given one.
inline unsigned meets(const Boxes& boxes, const gmVector<2>& low, const gmVector<2>& high) {
    return ((Eight::load(boxes.lowX) <= high.x()) & (Eight::load(boxes.highX) >= low.x()) &
            (Eight::load(boxes.lowY) <= high.y()) & (Eight::load(boxes.highY) >= low.y()))
        .bits();
}

/// Calls visit(i, j) for the lowest boxes i <= j of a tree that meet, until it answers false.
template <class Visit>
class BoxPairs {
  public:
    BoxPairs(const EdgeTree& tree, Visit visit) : tree_(tree), visit_(visit) {}

    /// Pairs within a group, and so within the tree from its topmost one.
    bool within(std::size_t level, std::size_t group) { return between(level, group, group); }

  private:
    bool between(std::size_t level, std::size_t a, std::size_t b) {
        const Boxes& first = tree_.boxes(level, a);
        const Boxes& second = tree_.boxes(level, b);
        for (std::size_t lane = 0; lane < fanOut; ++lane) {
            unsigned open = meets(second, {first.lowX[lane], first.lowY[lane]}, {first.highX[lane], first.highY[lane]});
            if (a == b)
                open = open >> lane << lane;
            for (; open != 0; open &= open - 1) {
                const std::size_t i = a * fanOut + lane;
                const std::size_t j = b * fanOut + lowestBit(open);
                if (!(level == 0 ? visit_(i, j) : between(level - 1, i, j)))
                    return false;
            }
        }
        return true;
    }

    const EdgeTree& tree_;
    Visit visit_;
};

}  // namespace detail
