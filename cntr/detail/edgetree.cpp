#include "cntr/detail/edgetree.h"

#include <algorithm>
#include <cmath>

#include "cntr/detail/runs.h"

namespace {

using detail::Boxes;
using detail::Corners;
using detail::fanOut;

void set(Boxes& boxes, std::size_t lane, const Corners& corners) {
    double corner[2];
    storeTwo(corners.low, corner);
    boxes.lowX[lane] = corner[0];
    boxes.lowY[lane] = corner[1];
    storeTwo(corners.high, corner);
    boxes.highX[lane] = corner[0];
    boxes.highY[lane] = corner[1];
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

template <class CornersOf>
void detail::EdgeTree::fill(std::size_t count, CornersOf cornersOfLowest) {
    levelStart_.clear();
    std::size_t total = 0;
    for (std::size_t groups = groupsOf(count); groups > 0; groups = groups > 1 ? groupsOf(groups) : 0) {
        levelStart_.push_back(total);
        total += groups;
    }
    boxes_.resize(total);
    // The boxes of a level are numbered through: box i stands in lane i % 8 of group i / 8.
    const auto fillLevel = [&](std::size_t level, auto cornersOfBox) {
        Boxes* const groups = boxes_.data() + levelStart_[level];
        for (std::size_t i = 0; i < count; ++i)
            set(groups[i / fanOut], i % fanOut, cornersOfBox(i));
        for (std::size_t i = count; i % fanOut != 0; ++i)
            set(groups[i / fanOut], i % fanOut, Corners());
        count = groupsOf(count);
    };
    fillLevel(0, cornersOfLowest);
    for (std::size_t level = 1; level < levels(); ++level)
        fillLevel(level, [&](std::size_t i) { return cornersOf(boxes(level - 1, i)); });
}

void detail::EdgeTree::build(const std::vector<gmVector<2>>& points, bool closed) {
    Runs runs(points, closed);
    fill(runs.count(), [&](std::size_t i) { return Corners::of(runs.at(i)); });
}

void detail::EdgeTree::build(const std::vector<Extent>& boxes) {
    fill(boxes.size(), [&](std::size_t i) { return Corners{placeOf(boxes[i].low), placeOf(boxes[i].high)}; });
}

detail::Extent detail::Extent::enclosing(const Extent& other) const {
    return {{std::min(low.x(), other.low.x()), std::min(low.y(), other.low.y())},
            {std::max(high.x(), other.high.x()), std::max(high.y(), other.high.y())},
            isTame && other.isTame};
}

void detail::EdgeIndex::computeExtent(const std::vector<gmVector<2>>& points) {
    // Differences of such coordinates have finite squares, and sums of those are finite.
    constexpr double tame = 1e150;
    // What is not finite makes no number of the sum; four boxes and sums, so that none waits for the one before.
    Corners corners[4];
    Two sums[4] = {both(0.0), both(0.0), both(0.0), both(0.0)};
    const auto add = [&](std::size_t i, std::size_t to) {
        const Two place = placeOf(points[i]);
        corners[to].extend(place);
        sums[to] = sums[to] + (place - place);
    };
    std::size_t i = 0;
    for (; i + 4 <= points.size(); i += 4)
        for (std::size_t to = 0; to < 4; ++to)
            add(i + to, to);
    for (; i < points.size(); ++i)
        add(i, 0);
    for (std::size_t from = 1; from < 4; ++from) {
        corners[0].extend(corners[from]);
        sums[0] = sums[0] + sums[from];
    }
    double corner[4];
    storeTwo(corners[0].low, corner);
    storeTwo(corners[0].high, corner + 2);
    const bool areFinite = bits(sums[0] <= both(0.0)) == 3;
    const auto isTame = [](double value) { return std::fabs(value) <= tame; };
    extent_ = {{corner[0], corner[1]}, {corner[2], corner[3]}, areFinite && std::all_of(corner, corner + 4, isTame)};
    hasExtent_ = true;
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
