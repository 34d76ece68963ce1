#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "foundation/math/vector.h"

namespace mokshape {

/// The point that "X,Y" or "X Y" spells, with blanks around the numbers; none for anything else, NaN and infinities
/// included.
std::optional<gmVector<2>> parsePoint(std::string_view text);

/// The points of a text, one a line. A byte order mark, empty lines and lines that start with # are skipped.
/// Throws: FileError that names the line.
std::vector<gmVector<2>> readPoints(std::string_view text);

}  // namespace mokshape
