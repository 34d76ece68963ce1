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
    fill(boxes.size(), [&](std::size_t i) { return Corners{loadTwo(boxes[i].low), loadTwo(boxes[i].high)}; });
}

detail::Extent detail::Extent::enclosing(const Extent& other) const {
    return {{std::min(low.x(), other.low.x()), std::min(low.y(), other.low.y())},
            {std::max(high.x(), other.high.x()), std::max(high.y(), other.high.y())},
            isTame && other.isTame};
}

detail::Extent detail::GrowingExtent::extent() const {
    double value[6];
    storeTwo(corners.low, value);
    storeTwo(corners.high, value + 2);
    storeTwo(sum, value + 4);
    const bool isTame = std::isfinite(value[4]) && std::isfinite(value[5]) &&
                        std::all_of(value, value + 4, [](double corner) { return detail::isTame(corner); });
    return {{value[0], value[1]}, {value[2], value[3]}, isTame};
}

void detail::EdgeIndex::computeExtent(const std::vector<gmVector<2>>& points) {
    // Four, so that no step has to wait for the one before.
    GrowingExtent parts[4];
    std::size_t i = 0;
    for (; i + 4 <= points.size(); i += 4)
        for (std::size_t part = 0; part < 4; ++part)
            parts[part].extend(loadTwo(points[i + part]));
    for (; i < points.size(); ++i)
        parts[0].extend(loadTwo(points[i]));
    for (std::size_t part = 1; part < 4; ++part)
        parts[0].extend(parts[part]);
    learnExtent(parts[0].extent());
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
