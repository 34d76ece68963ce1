#include "tools/mokshape/merge.h"

#include <cmath>
#include <string>
#include <utility>

#include "tools/io/text.h"
#include "tools/mokshape/merging.h"
#include "tools/mokshape/progress.h"
#include "tools/mokshape/rewrite.h"

namespace mokshape {

namespace {

/// Everything that the outlines written do not show to somebody who did not see those that were read.
std::string summaryOf(const Merged& merged) {
    constexpr int digits = 5;
    std::string summary = counted(merged.polygonsBefore, "polygon", "polygons") + " became " +
                          std::to_string(merged.polygonsAfter) + '\n';
    if (!merged.replaced.empty() && std::isfinite(merged.areaBefore) && std::isfinite(merged.areaAfter))
        summary += "the area inside outlines was " + formatSignificant(merged.areaBefore, digits) + " and is " +
                   formatSignificant(merged.areaAfter, digits) + '\n';
    if (merged.droppedHoles > 0)
        summary += counted(merged.droppedHoles, "hole is", "holes are") + " dropped\n";
    if (merged.isStillCrossing)
        summary += "outlines still cross: merging the output again may join them\n";
    return summary;
}

Rewritten merged(const OutlineFile& file, gmContourDefs::IntersectionMode mode, Progress& progress) {
    progress.start("setting holes", workOf(file.outlines));
    const RegionFile regions = takeRegions(file, gmContourDefs::eKeep, progress);
    progress.start("merging polygons", 0.0);
    Merged result = mergePolygons(regions, mode);
    std::string summary = summaryOf(result);
    return {std::move(result.outlines), std::move(result.replaced), std::move(summary)};
}

}  // namespace

void addMerge(CLI::App& program) {
    addRewrite(program, {"merge", "Merge polygons of a file whose outlines cross each other",
                         "keep the outermost loops of what is cleaned only",
                         "Polygons whose outlines cross or touch are joined to one outline, and outlines that\n"
                         "cross themselves, then or before, are replaced by their outer boundary, traced once\n"
                         "around; see regularize. Each polygon is compared once with those behind it: where\n"
                         "many cross, some may be left, and merging the output again may join them. All\n"
                         "other polygons, also one that lies inside another, and all lines stay as they are.\n"
                         "\n"
                         "The trace runs along both outlines where polygons overlap and may leave out the\n"
                         "overlap, or come back early and leave out large parts: compare the areas that are\n"
                         "printed, and look at the picture. What is merged or cleaned loses its holes; how\n"
                         "many these were is printed. Polygons that are merged come last, each as a feature\n"
                         "with the label 0. When polygons cannot be merged, nothing is written.\n"
                         "\n"
                         "Examples:\n"
                         "  mokshape merge parts.geojson -o merged.geojson --svg merged.svg\n"
                         "  mokshape merge parts.geojson -o hulls.wkt --outer-hull\n",
                         merged});
}

}  // namespace mokshape
