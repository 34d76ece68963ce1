#pragma once

#include <iosfwd>
#include <vector>

#include "tools/io/outline.h"

namespace mokshape {

/// Writes an archive of shapes behind pointers, one a feature, as readArchive() reads them: a polygon as a region with
/// its holes, a line as an open contour, several polygons as a region set. Regions and contours have the label, holes
/// have 0.
///
/// Nothing holds several lines, or lines and polygons: each of them becomes a feature, and `notes`, if any, say so.
/// Deliberate: holes are written as they are, also those that meet their outline, on which gmRegion::holes would not
/// set them.
/// Throws: FileError for what the format cannot hold.
void writeArchive(std::ostream& out, const std::vector<Outline>& outlines, Notes* notes = nullptr);

}  // namespace mokshape
