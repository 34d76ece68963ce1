#include "tools/mokshape/regularize.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "tools/io/text.h"
#include "tools/mokshape/progress.h"
#include "tools/mokshape/regions.h"
#include "tools/mokshape/rewrite.h"

namespace mokshape {

namespace {

/// "3 of 12 outlines crossed themselves": each hole is an outline, and lines are none.
std::string summaryOf(const RegionFile& file) {
    const std::vector<Outline>& outlines = file.file.outlines;
    const auto closed =
        std::count_if(outlines.begin(), outlines.end(), [](const Outline& outline) { return outline.isClosed(); });
    return std::to_string(file.replaced.size()) + " of " +
           counted(static_cast<std::size_t>(closed), "outline", "outlines") + " crossed " +
           (file.replaced.size() == 1 ? "itself\n" : "themselves\n");
}

Rewritten cleaned(const OutlineFile& file, gmContourDefs::IntersectionMode mode, Progress& progress) {
    progress.start("cleaning outlines", workOf(file.outlines));
    RegionFile result = takeRegions(file, mode, progress);
    std::string summary = summaryOf(result);
    return {std::move(result.file.outlines), std::move(result.replaced), std::move(summary)};
}

}  // namespace

void addRegularize(CLI::App& program) {
    addRewrite(program,
               {"regularize", "Replace the outlines of a file that cross themselves", "keep the outermost loops only",
                "Each outline and each hole that crosses itself is replaced by its outer boundary,\n"
                "traced once around, which touches itself where the outline crossed. With\n"
                "--outer-hull, loops of this that lie inside others are dropped. Where an outline\n"
                "winds around something more than once, the trace may leave out large parts: look\n"
                "at the picture. All other outlines and all lines stay as they are.\n"
                "\n"
                "The holes of a polygon are set on the outline that replaces its own. Where one of\n"
                "them meets it, or an outline cannot be traced, the place is named and nothing is\n"
                "written. Of a GeoJSON feature its geometry and its property \"label\" are kept, WKT\n"
                "has no place for labels.\n"
                "\n"
                "With - for the file, standard input is a stream: one GeoJSON feature or geometry\n"
                "a line, or archives (--input mok), each after its length in four bytes, the lowest\n"
                "first. Each is answered at once with a Feature on a line. Its id, its properties\n"
                "and all else that it has are kept; where an outline is replaced, the geometry is\n"
                "written anew and a member \"bbox\" is left out. The first that is refused ends the\n"
                "run; with --keep-going it is answered with {\"error\": ...}, and its id, and the exit\n"
                "status is 1 at the end.\n"
                "\n"
                "Examples:\n"
                "  mokshape regularize samples/lasso.geojson -o simple.geojson --svg lasso.svg\n"
                "  mokshape regularize samples/lasso.geojson -o hull.wkt --outer-hull\n"
                "  mokshape regularize - < parts.geojsonl > simple.geojsonl\n",
                cleaned, true});
}

}  // namespace mokshape
