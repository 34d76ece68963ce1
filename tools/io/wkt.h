#pragma once

#include <iosfwd>
#include <string_view>
#include <vector>

#include "tools/io/outline.h"

namespace mokshape {

/// The outlines of a text of WKT geometries, separated by white space or semicolons; each is a feature.
///
/// POLYGON, MULTIPOLYGON, LINESTRING, MULTILINESTRING, GEOMETRYCOLLECTION of these, and EMPTY, in any case. WKT knows
/// no labels: they are 0.
/// Throws: FileError that names the feature, the line and what is wrong.
/// `notes`, if any, get what is read and lost.
std::vector<Outline> readWkt(std::string_view text, Notes* notes = nullptr);

/// Writes one geometry a line; an empty collection when there is no outline. Outlines of one feature come together
/// again; numbers round-trip. Labels are lost, as `notes` say: WKT has no place for them.
void writeWkt(std::ostream& out, const std::vector<Outline>& outlines, Notes* notes = nullptr);

}  // namespace mokshape
