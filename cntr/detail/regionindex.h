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
    /// Makes it of the regions' boxes.
    void build(const std::vector<Extent>& boxes);
    /// There is something about the regions that only asking each can tell.
    void giveUp() { state_ = State::eUseless; }
    bool isBuilt() const { return state_ == State::eBuilt; }

    const EdgeTree& tree() const { return tree_; }
    /// Which region each of the lowest boxes is that of.
    std::size_t region(std::size_t box) const { return order_[box]; }
    /// The largest coordinate, in magnitude.
    double largest() const { return largest_; }

    /// How many regions, from the first on, have been asked for their box under the identity as the plain procedure
    /// does for each: what they remember and the random sequence are as it leaves them.
    std::size_t asked = 0;

    void invalidate() { state_ = State::eNotAsked; }

  private:
    enum class State : unsigned char { eNotAsked, eAsked, eBuilt, eUseless };

    State state_ = State::eNotAsked;
    std::uint64_t changes_ = 0;  // when that was so
    std::vector<std::size_t> order_;
    double largest_ = 0.0;
    EdgeTree tree_;
};

}  // namespace detail
