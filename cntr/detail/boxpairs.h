#pragma once

#include <algorithm>
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

enum class Pairs { eAll, eOrdered };

/// Calls visit(i, j) for the lowest boxes i of one tree and j of another that meet, until it answers false; ordered,
/// for j >= i only.
template <class Visit>
class BoxPairs {
  public:
    BoxPairs(const EdgeTree& one, const EdgeTree& other, Pairs pairs, Visit visit)
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
                const std::size_t j = b * fanOut + lowestBit(open);
                if (!(level == 0 ? visit_(i, j) : between(level - 1, i, j)))
                    return false;
            }
        }
        return true;
    }

    /// All pairs. The deeper tree is gone down alone until both are on one level.
    bool all(const Extent& extentOfOne, const Extent& extentOfOther) {
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
                          const Extent& extent, Take take) {
        if (level == wanted) {
            take(group);
            return;
        }
        unsigned open = meets(tree.boxes(level, group), extent.low, extent.high);
        for (; open != 0; open &= open - 1)
            eachGroup(tree, level - 1, group * fanOut + lowestBit(open), wanted, extent, take);
    }

    const EdgeTree& one_;
    const EdgeTree& other_;
    Pairs pairs_;
    Visit visit_;
};

}  // namespace detail
