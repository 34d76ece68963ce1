#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "cntr/detail/edgetree.h"
#include "foundation/math/vector.h"

namespace detail {

/// Where the regions of a set are: the boxes of their outlines and holes in one tree, in an order in which neighbours
/// follow each other.
///
/// It knows the regions as they were when it was made, and that they have not changed since: see sharedChanges. Like
/// the tree of a contour it is made for the second question.
class RegionIndex {
  public:
    /// Up to this many regions asking each takes less time.
    static constexpr std::size_t askEachAtMost = 8;

    /// Whether it is worth making now.
    bool isWanted(std::size_t regions);
    /// Makes it of the regions' boxes; it stays unmade where not all coordinates are tame.
    void build(const std::vector<Extent>& boxes);
    bool isBuilt() const { return state_ == State::eBuilt; }

    const EdgeTree& tree() const { return tree_; }
    /// Which region each of the lowest boxes is that of.
    std::size_t region(std::size_t box) const { return order_[box]; }
    /// The largest coordinate, in magnitude.
    double largest() const { return largest_; }

    /// Calls ask(i) for those of the first `count` regions that it was not called for since the index was made. It is
    /// to ask for the box under the identity, as the plain procedure does for each: what they remember and the random
    /// sequence are then as that leaves them.
    template <class Ask>
    void askUpTo(std::size_t count, Ask ask) {
        for (; asked_ < count; ++asked_)
            ask(asked_);
    }
    std::size_t asked() const { return asked_; }

    void invalidate() { state_ = State::eNotAsked; }

  private:
    enum class State : unsigned char { eNotAsked, eAsked, eBuilt, eUseless };

    State state_ = State::eNotAsked;
    std::uint64_t changes_ = 0;  // when that was so
    std::size_t asked_ = 0;      // how many, from the first on
    std::vector<std::size_t> order_;
    double largest_ = 0.0;
    EdgeTree tree_;
};

}  // namespace detail
