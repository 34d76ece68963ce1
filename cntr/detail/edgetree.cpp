#include "cntr/detail/edgetree.h"

#include <algorithm>
#include <limits>

#include "cntr/detail/runs.h"

namespace {

using detail::Boxes;
using detail::fanOut;
using detail::Two;

constexpr double infinity = std::numeric_limits<double>::infinity();

/// The corners of a box that grows, x and y side by side.
struct Corners {
    Two low = detail::both(infinity);
    Two high = detail::both(-infinity);

    void extend(const Two& place) {
        low = smaller(place, low);
        high = larger(place, high);
    }
    void extend(const Corners& other) {
        low = smaller(other.low, low);
        high = larger(other.high, high);
    }
};

Two placeOf(const gmVector<2>& v) {
    return detail::loadTwo(reinterpret_cast<const double*>(&v));
}

void set(Boxes& boxes, std::size_t lane, const Corners& corners) {
    double corner[2];
    storeTwo(corners.low, corner);
    boxes.lowX[lane] = corner[0];
    boxes.lowY[lane] = corner[1];
    storeTwo(corners.high, corner);
    boxes.highX[lane] = corner[0];
    boxes.highY[lane] = corner[1];
}

Corners cornersOf(const detail::Run& run) {
    Corners corners;
    for (std::size_t i = 0; i <= fanOut; ++i)
        corners.extend(placeOf(run.from[i]));
    return corners;
}

Corners cornersOf(const Boxes& boxes) {
    const auto least = [](const double(&of)[fanOut]) { return smallest(detail::Eight::load(of)); };
    const auto most = [](const double(&of)[fanOut]) { return largest(detail::Eight::load(of)); };
    const double low[] = {least(boxes.lowX), least(boxes.lowY)};
    const double high[] = {most(boxes.highX), most(boxes.highY)};
    return {detail::loadTwo(low), detail::loadTwo(high)};
}

std::size_t groupsOf(std::size_t count) {
    return (count + fanOut - 1) / fanOut;
}

}  // namespace

void detail::EdgeTree::build(const std::vector<gmVector<2>>& points, bool closed) {
    Runs runs(points, closed);
    levelStart_.clear();
    std::size_t total = 0;
    for (std::size_t groups = groupsOf(runs.count()); groups > 0; groups = groups > 1 ? groupsOf(groups) : 0) {
        levelStart_.push_back(total);
        total += groups;
    }
    boxes_.resize(total);
    // The boxes of a level are numbered through: lane i % 8 of group i / 8.
    const auto fill = [&](std::size_t level, std::size_t count, auto cornersOfBox) {
        for (std::size_t i = 0; i < count; ++i)
            set(boxes_[levelStart_[level] + i / fanOut], i % fanOut, cornersOfBox(i));
        for (std::size_t i = count; i % fanOut != 0; ++i)
            set(boxes_[levelStart_[level] + i / fanOut], i % fanOut, Corners());
    };
    std::size_t count = runs.count();
    for (std::size_t level = 0; level < levels(); ++level, count = groupsOf(count))
        if (level == 0)
            fill(0, count, [&](std::size_t i) { return cornersOf(runs.at(i)); });
        else
            fill(level, count, [&](std::size_t i) { return cornersOf(boxes(level - 1, i)); });
}

const detail::Extent& detail::EdgeIndex::extent(const std::vector<gmVector<2>>& points) {
    if (hasExtent_)
        return extent_;
    // Differences of such coordinates have finite squares, and sums of those are finite.
    constexpr double tame = 1e150;
    Corners corners;
    TwoBools inside = both(0.0) <= both(0.0);
    for (const gmVector<2>& v : points) {
        const Two place = placeOf(v);
        corners.extend(place);
        inside = inside & (both(-tame) <= place) & (place <= both(tame));
    }
    double corner[4];
    storeTwo(corners.low, corner);
    storeTwo(corners.high, corner + 2);
    extent_ = {{corner[0], corner[1]}, {corner[2], corner[3]}, !points.empty() && bits(inside) == 3};
    hasExtent_ = true;
    return extent_;
}

const detail::EdgeTree* detail::EdgeIndex::forOne(const std::vector<gmVector<2>>& points, bool closed) {
    if (state_ == State::eBuilt)
        return &tree_;
    if (state_ == State::eNotAsked) {
        state_ = State::eAsked;
        return nullptr;
    }
    return forMany(points, closed);
}

const detail::EdgeTree* detail::EdgeIndex::forMany(const std::vector<gmVector<2>>& points, bool closed) {
    if (state_ == State::eBuilt)
        return &tree_;
    if (points.size() <= scanAtMost || !extent(points).isTame)
        return nullptr;
    tree_.build(points, closed);
    state_ = State::eBuilt;
    return &tree_;
}
