#pragma once

#include <string_view>
#include <vector>

#include "tools/io/outline.h"

namespace mokshape {

/// The outlines of an archive of shapes behind pointers, one after the other: writeArchive() makes such, and so does an
/// application that archives handles. Each pointer is a feature.
///
/// A closed contour and a region are a polygon, a region's holes the polygon's; an open contour is a line; a region set
/// is the polygons of one feature, each with its own label. What lies in a hole of a hole is a further polygon of the
/// feature. Shapes with edge points are read as the plain ones that they are.
/// `notes`, if any, get what is lost: sharing, cache sizes, edge points, labels of holes, empty handles, what is no
/// shape.
/// Throws: FileError that names the byte where the archive is damaged, or the feature and the object that cannot be an
/// outline: too few vertices, coordinates that are not finite, much more in all than the archive is long.
std::vector<Outline> readArchive(std::string_view bytes, Notes* notes = nullptr);

/// The same for an archive of one pointer: a shape or the empty handle. Throws: FileError also for any other archive;
/// messages do not name the only feature.
std::vector<Outline> readArchiveShape(std::string_view bytes);

}  // namespace mokshape
