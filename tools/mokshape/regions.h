#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "cntr/region.h"
#include "tools/io/grouping.h"
#include "tools/io/outline.h"

namespace mokshape {

class Progress;

/// A polygon or a line of a file.
struct Shape {
    Part part;                ///< where it lies in the file's outlines
    RegionCPtr region;        ///< a polygon with its holes; the empty handle for lines and empty polygons
    std::size_t cleaned = 0;  ///< so many of its outlines crossed themselves and were replaced
};

/// A file whose polygons are regions.
struct RegionFile {
    OutlineFile file;  ///< with the outlines of the regions; lines as they were
    std::vector<Shape> shapes;
    std::vector<Outline> replaced;  ///< the outlines that were cleaned, as they were in the file
};

gmContour contourOf(const Outline& outline);

/// Makes a region of every polygon: the outline with its label and its holes. Each of these outlines that crosses
/// itself is kept or replaced, as the mode says. `progress` advances by workOf each outline.
/// Throws: FileError that names file, feature, part and ring: what cannot be cleaned, and holes that the library does
/// not set on their outline.
RegionFile takeRegions(OutlineFile file, gmContourDefs::IntersectionMode mode, Progress& progress);

/// The same for files that are still to be read.
std::vector<RegionFile> readRegions(const std::vector<std::string>& names, gmContourDefs::IntersectionMode mode,
                                    Progress& progress);

/// Replaces the outline of a region that crosses itself, as the mode says; the label stays. `outline` is where it
/// stands in the file. Throws: FileError that names file, feature, part and ring when nothing can be made of it.
void cleanOutline(gmRegion& region, gmContourDefs::IntersectionMode mode, const std::string& file,
                  const Outline& outline);

/// Throws the FileError that names file, feature, part and ring. Without a name of the file, it is a record by itself:
/// neither file nor feature are named then.
[[noreturn]] void refuse(const std::string& file, const Outline& outline, const std::string& why);

/// How long an outline takes to clean and to measure, in no particular unit: crossings and the diameter compare every
/// vertex with every other.
double workOf(const Outline& outline);
double workOf(const std::vector<Outline>& outlines);

}  // namespace mokshape
