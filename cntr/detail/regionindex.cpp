#include "cntr/detail/regionindex.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "cntr/detail/sharedchanges.h"

namespace {

using detail::Extent;

gmVector<2> middleOf(const Extent& box) {
    return 0.5 * box.low + 0.5 * box.high;
}

/// The bits of a number of 16 bits, with a 0 before each.
std::uint32_t spread(std::uint32_t bits) {
    bits = (bits | bits << 8) & 0x00FF00FFU;
    bits = (bits | bits << 4) & 0x0F0F0F0FU;
    bits = (bits | bits << 2) & 0x33333333U;
    return (bits | bits << 1) & 0x55555555U;
}

/// The place of the box along a curve that runs through the area quarter by quarter. Method: G. M. Morton (1966).
std::uint32_t alongCurve(const Extent& box, const Extent& area) {
    const auto sixteenBits = [](double value, double low, double high) {
        const double share = high > low ? (value - low) / (high - low) : 0.0;
        return static_cast<std::uint32_t>(std::clamp(share, 0.0, 1.0) * 65535.0);
    };
    const gmVector<2> middle = middleOf(box);
    return spread(sixteenBits(middle.x(), area.low.x(), area.high.x())) |
           spread(sixteenBits(middle.y(), area.low.y(), area.high.y())) << 1;
}

}  // namespace

bool detail::RegionIndex::isWanted(std::size_t regions) {
    const std::uint64_t now = sharedChanges();
    if (changes_ != now)
        state_ = State::eNotAsked;
    changes_ = now;
    if (state_ == State::eNotAsked) {
        state_ = State::eAsked;
        return false;
    }
    return state_ == State::eAsked && regions > askEachAtMost;
}

void detail::RegionIndex::build(const std::vector<Extent>& boxes) {
    const Extent area = std::accumulate(boxes.begin(), boxes.end(), boxes.front(),
                                        [](const Extent& a, const Extent& b) { return a.enclosing(b); });
    if (!area.isTame) {
        state_ = State::eUseless;  // only asking each can tell
        return;
    }
    largest_ = std::max({-area.low.x(), -area.low.y(), area.high.x(), area.high.y()});
    std::vector<std::uint32_t> place(boxes.size());
    std::transform(boxes.begin(), boxes.end(), place.begin(), [&](const Extent& box) { return alongCurve(box, area); });
    order_.resize(boxes.size());
    std::iota(order_.begin(), order_.end(), std::size_t{0});
    std::sort(order_.begin(), order_.end(), [&](std::size_t a, std::size_t b) { return place[a] < place[b]; });
    std::vector<Extent> sorted;
    sorted.reserve(boxes.size());
    for (const std::size_t region : order_)
        sorted.push_back(boxes[region]);
    tree_.build(sorted);
    asked_ = 0;
    state_ = State::eBuilt;
}
