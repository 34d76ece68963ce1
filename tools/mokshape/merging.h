#pragma once

#include <cstddef>
#include <vector>

#include "cntr/defs.h"
#include "tools/io/outline.h"
#include "tools/mokshape/regions.h"

namespace mokshape {

/// What became of the polygons of a file, see gmRegionSet::regularize and gmRegionSet::outerHull.
struct Merged {
    /// In the order of the file: lines, empty polygons, and the polygons that were not merged with others, at their
    /// places and with their labels. Then, each a feature of its own with label 0, what others became together.
    std::vector<Outline> outlines;
    std::vector<Outline> replaced;  ///< the outlines that were cleaned or merged, and the holes dropped with them
    std::size_t polygonsBefore = 0;
    std::size_t polygonsAfter = 0;
    std::size_t droppedHoles = 0;
    double areaBefore = 0.0;  ///< inside the outlines; where they overlap, each counts
    double areaAfter = 0.0;
    bool isStillCrossing = false;
};

/// Merges polygons whose outlines cross, and cleans all that cross themselves. The mode is eRegularize or eOuterHull.
/// Throws: FileError that names the file; and feature, part and ring of an outline that cannot be cleaned or merged
/// with another, unless it takes more than two.
Merged mergePolygons(const RegionFile& file, gmContourDefs::IntersectionMode mode);

}  // namespace mokshape
