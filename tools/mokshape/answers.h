#pragma once

#include <cstddef>
#include <iosfwd>
#include <optional>
#include <vector>

#include "foundation/math/vector.h"
#include "tools/mokshape/options.h"
#include "tools/mokshape/regions.h"

namespace mokshape {

/// A region that holds a point; or the nearest one, where none does.
struct Answer {
    gmVector<2> point;
    bool isInside = false;
    const RegionFile* file = nullptr;  ///< none where there is no region at all
    const Outline* outline = nullptr;  ///< of the region, in the file
    std::optional<double> distance;    ///< from the point to the region's nearest boundary, holes included
};

/// What the files' regions say of a point, holes considered: an answer for each region that holds it, in the order of
/// the files; where none does, one for that with the nearest boundary.
/// Ties: the first. The answers point into the files.
std::vector<Answer> askRegions(const gmVector<2>& point, const std::vector<RegionFile>& files);

/// Writes the answers, which belong to so many points, as one report. The table names the files only when asked to.
/// Numbers of JSON and CSV round-trip.
void writeAnswers(std::ostream& out, Format format, const std::vector<Answer>& answers, std::size_t points,
                  bool namesFiles);

}  // namespace mokshape
