#include "tools/mokshape/merging.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

#include "cntr/regionst.h"
#include "tools/io/text.h"

namespace mokshape {

namespace {

/// Of an outline: a file cannot hold one of fewer.
constexpr std::size_t fewestVertices = 3;

class Merger {
  public:
    Merger(const RegionFile& file, gmContourDefs::IntersectionMode mode) : file_(file), mode_(mode) {}

    Merged merge() {
        const gmRegionSet before(polygons());
        const gmRegionSet after = merged(before);
        result_.areaBefore = before.area(false);
        remaining_ = after.regions();
        for (const Shape& shape : file_.shapes)
            takeShape(shape);
        for (const RegionCPtr& region : remaining_)
            addFeature(*region);
        result_.areaAfter = after.area(false);
        result_.isStillCrossing = after.isSelfIntersecting();
        return std::move(result_);
    }

  private:
    std::vector<RegionCPtr> polygons() const {
        std::vector<RegionCPtr> regions;
        for (const Shape& shape : file_.shapes)
            if (!shape.region.isNull())
                regions.push_back(shape.region);
        return regions;
    }

    void cleanUp(const gmRegionSet& before, gmRegionSet& after) const {
        if (mode_ == gmContourDefs::eOuterHull)
            before.outerHull(after);
        else
            before.regularize(after);
    }

    gmRegionSet merged(const gmRegionSet& before) const {
        gmRegionSet after;
        try {
            cleanUp(before, after);
        } catch (const gmException& error) {
            refuseCulprit();
            refuseTogether(error.what());
        }
        return after;
    }

    [[noreturn]] void refuseTogether(const std::string& why) const {
        throw FileError(printable(file_.file.name) + ": polygons that cross each other cannot be merged: " + why);
    }

    /// The library does not say which polygon it is: throws for one that crosses no other and cannot be cleaned, and
    /// for two that cannot be merged even without the others.
    void refuseCulprit() const {
        for (const Shape& shape : file_.shapes)
            if (!shape.region.isNull()) {
                const std::vector<const Shape*> others = crossing(shape);
                if (others.empty())
                    cleanAlone(shape);
                for (const Shape* const other : others)
                    tryMerging(shape, *other);
            }
    }

    std::vector<const Shape*> crossing(const Shape& shape) const {
        std::vector<const Shape*> others;
        for (const Shape& other : file_.shapes)
            if (&other != &shape && !other.region.isNull() &&
                !shape.region->intersections(*other.region, false).empty())
                others.push_back(&other);
        return others;
    }

    void cleanAlone(const Shape& shape) const {
        gmRegion alone(*shape.region);
        cleanOutline(alone, mode_, file_.file.name, outerOf(shape));
    }

    void tryMerging(const Shape& shape, const Shape& other) const {
        try {
            gmRegionSet after;
            cleanUp(gmRegionSet(std::vector<RegionCPtr>{shape.region, other.region}), after);
        } catch (const gmException& error) {
            refuse(file_.file.name, outerOf(shape),
                   "the polygon cannot be merged with " + placeText(outerOf(other).feature, outerOf(other).part) +
                       ", which it crosses: " + error.what());
        }
    }

    const Outline& outerOf(const Shape& shape) const { return file_.file.outlines[shape.part.first]; }

    void takeShape(const Shape& shape) {
        result_.polygonsBefore += !shape.part.isLine;
        lastFeature_ = std::max(lastFeature_, outerOf(shape).feature);
        if (shape.region.isNull()) {
            keep(shape);
            return;
        }
        const RegionCPtr alone = takeUnmerged(*shape.region);
        if (!alone.isNull() && alone->points() == shape.region->points()) {
            keep(shape);
            return;
        }
        const auto first = file_.file.outlines.begin();
        result_.replaced.insert(result_.replaced.end(), first + static_cast<std::ptrdiff_t>(shape.part.first),
                                first + static_cast<std::ptrdiff_t>(shape.part.last));
        result_.droppedHoles += shape.region->holes().size();
        if (alone.isNull())
            return;
        if (alone->points().size() < fewestVertices)
            cleanAlone(shape);
        Outline outline = outerOf(shape);
        outline.points = alone->points();
        add(std::move(outline));
    }

    /// The region of the merged set that the polygon would have become without the others; the empty handle when there
    /// is none, because it was merged.
    RegionCPtr takeUnmerged(const gmRegion& polygon) {
        gmRegion alone;
        try {
            if (mode_ == gmContourDefs::eOuterHull)
                polygon.outerHull(alone);
            else
                polygon.regularize(alone);
        } catch (const gmException&) {
            return {};
        }
        const auto found = std::find_if(remaining_.begin(), remaining_.end(), [&alone](const RegionCPtr& region) {
            return region->points() == alone.points();
        });
        if (found == remaining_.end())
            return {};
        RegionCPtr taken = *found;
        remaining_.erase(found);
        return taken;
    }

    void keep(const Shape& shape) {
        for (std::size_t i = shape.part.first; i < shape.part.last; ++i)
            result_.outlines.push_back(file_.file.outlines[i]);
        result_.polygonsAfter += !shape.part.isLine;
    }

    void add(Outline outline) {
        result_.outlines.push_back(std::move(outline));
        ++result_.polygonsAfter;
    }

    void addFeature(const gmRegion& region) {
        if (region.points().size() < fewestVertices)
            refuseTogether("next to nothing is left of them");
        Outline outline;
        outline.feature = ++lastFeature_;
        outline.points = region.points();
        add(std::move(outline));
    }

    const RegionFile& file_;
    const gmContourDefs::IntersectionMode mode_;
    Merged result_;
    std::vector<RegionCPtr> remaining_;  ///< of the merged set: those that no polygon has become yet
    std::size_t lastFeature_ = 0;
};

}  // namespace

Merged mergePolygons(const RegionFile& file, gmContourDefs::IntersectionMode mode) {
    return Merger(file, mode).merge();
}

}  // namespace mokshape
