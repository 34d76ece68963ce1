#include <algorithm>
#include <cmath>
#include <limits>

#include "cntr/detail/runs.h"
#include "cntr/detail/tolerances.h"
#include "cntr/inertia.h"
#include "cntr/regionst.h"

template <class Value, class Compute>
Value gmRegionSet::remembered(detail::Cached<Value>& slot, Compute compute) const {
    const bool isNew = !slot.isValid();
    const Value value = slot.get([&](Value& kept) { kept = compute(); });
    if (isNew)
        reportChange();
    return value;
}

double gmRegionSet::area(bool considerHoles) const {
    return remembered(caches_.area[considerHoles], [&] {
        double sum = 0.0;
        for (const RegionCPtr& region : regions_)
            sum += region->area(considerHoles);
        return sum;
    });
}

gmVector<2> gmRegionSet::centerOfMass(bool considerHoles) const {
    checkEmptyRegionSet();
    return remembered(caches_.centerOfMass[considerHoles], [&] {
        gmVector<2> moment;
        double mass = 0.0;
        for (const RegionCPtr& region : regions_) {
            const double area = region->area(considerHoles);
            moment = moment + area * region->centerOfMass(considerHoles);
            mass += area;
        }
        return std::abs(mass) > detail::noMass ? moment * (1.0 / mass) : gmVector<2>();
    });
}

gmMatrix<2> gmRegionSet::inertiaMatrix(bool considerHoles) const {
    checkEmptyRegionSet();
    return remembered(caches_.inertiaMatrix[considerHoles], [&] {
        gm_InertiaData all;
        for (const RegionCPtr& region : regions_) {
            // One after the other: what fails decides what the region remembers.
            const double area = region->area(considerHoles);
            const gmVector<2> center = region->centerOfMass(considerHoles);
            all = all + gm_InertiaData(area, center, region->inertiaMatrix(considerHoles));
        }
        return all.inertiaMatrix();
    });
}

namespace {

/// The regions whose box holds a point: a question to the tree of a set.
struct Holding {
    gmVector<2> point;

    unsigned opens(const detail::Boxes& boxes) const { return (squaresTo(boxes, point) <= 0.0).bits(); }
};

/// The least distance of a region: a question to the tree of a set.
struct LeastDistance {
    gmVector<2> point;
    double rounding;  // by which a region may come out nearer than its box
    double best;
    double limit_ = detail::unlimited;

    detail::Eight bounds(const detail::Boxes& boxes) const { return squaresTo(boxes, point); }
    double limit() const { return limit_; }
    void consider(double distance) {
        if (best > distance) {
            best = distance;
            // Squares that are no normal numbers tell nothing.
            const double square = std::max(detail::sameRoot(distance + rounding), std::numeric_limits<double>::min());
            limit_ = std::min(square, detail::unlimited);
        }
    }
};

}  // namespace

const detail::RegionIndex* gmRegionSet::index() const {
    detail::RegionIndex& index = caches_.regionIndex;
    if (index.isWanted(regions_.size())) {
        std::vector<detail::Extent> boxes;
        boxes.reserve(regions_.size());
        for (const RegionCPtr& region : regions_)
            boxes.push_back(region.isNull() ? detail::Extent() : region->extentWithHoles());
        index.build(boxes);
    }
    return index.isBuilt() ? &index : nullptr;
}

void gmRegionSet::askUpTo(std::size_t count) const {
    caches_.regionIndex.askUpTo(count, [&](std::size_t i) { regions_[i]->encloseRect(gmXform<2>::I); });
}

std::vector<std::size_t> gmRegionSet::regionsAround(const gmVector<2>& point, const detail::RegionIndex& index) const {
    std::vector<std::size_t> found;
    const auto take = [&](std::size_t box) { found.push_back(index.region(box)); };
    walkInOrder(index.tree(), index.tree().levels() - 1, 0, Holding{point}, take);
    std::sort(found.begin(), found.end());
    return found;
}

bool gmRegionSet::inside(const gmVector<2>& point, bool considerHoles) const {
    const detail::RegionIndex* const index = this->index();
    if (!index || !detail::isTame(point))
        return std::any_of(regions_.begin(), regions_.end(),
                           [&](const RegionCPtr& region) { return region->inside(point, considerHoles); });
    for (const std::size_t i : regionsAround(point, *index)) {
        askUpTo(i + 1);
        if (regions_[i]->inside(point, considerHoles))
            return true;
    }
    askUpTo(regions_.size());
    return false;
}

double gmRegionSet::distToPoint(const gmVector<2>& point, bool vertexOnly, bool considerHoles,
                                bool insideIsZero) const {
    checkEmptyRegionSet();
    const detail::RegionIndex* const index = this->index();
    constexpr double infinity = std::numeric_limits<double>::infinity();
    if (!index || !detail::isTame(point) || (insideIsZero && index->asked() < regions_.size())) {
        double best = infinity;
        for (const RegionCPtr& region : regions_) {
            const double distance = region->distToPoint(point, vertexOnly, considerHoles, insideIsZero);
            if (best > distance)
                best = distance;
        }
        if (index && insideIsZero)
            askUpTo(regions_.size());
        return best;
    }
    if (insideIsZero) {
        bool isInside = false;
        for (const std::size_t i : regionsAround(point, *index))
            isInside = regions_[i]->inside(point, considerHoles) || isInside;
        if (isInside)
            return 0.0;
    }
    const double scale = index->largest() + std::fabs(point.x()) + std::fabs(point.y());
    LeastDistance question{point, 1e-14 * scale, infinity};
    const auto look = [&](std::size_t box) {
        const gmRegion& region = *regions_[index->region(box)];
        question.consider(vertexOnly ? region.distToPoint(point, true, considerHoles, false)
                                     : region.leastDistance(point, question.best + question.rounding));
    };
    walkLeastFirst(index->tree(), index->tree().levels() - 1, 0, question, look);
    return question.best;
}

gmRect gmRegionSet::encloseRect(const gmXform<2>& xform) const {
    checkEmptyRegionSet();
    bool isNew = false;
    const gmRect box = caches_.encloseRect.get(xform, cachedVectorSize_, [&] {
        isNew = true;
        gmRect all = regions_.front()->encloseRect(xform);
        for (std::size_t i = 1; i < regions_.size(); ++i)
            all = all.enclose(regions_[i]->encloseRect(xform));
        return all;
    });
    if (isNew)
        reportChange();
    return box;
}
