#include "tools/mokshape/regularize.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>

#include "tools/io/file.h"
#include "tools/io/text.h"
#include "tools/mokshape/cells.h"
#include "tools/mokshape/picture.h"
#include "tools/mokshape/progress.h"
#include "tools/mokshape/regions.h"

namespace mokshape {

namespace {

struct Options {
    std::string in;
    std::string out;
    std::string svg;
    bool outerHull = false;
};

void checkNames(const Options& options) {
    checkForm(options.out);
    for (const std::string& output : {options.out, options.svg})
        if (!output.empty() && isSameFile(options.in, output))
            throw FileError(printable(output) + ": the output would replace the file that is read");
    if (!options.svg.empty() && isSameFile(options.out, options.svg))
        throw FileError(printable(options.svg) + ": the picture would replace the outlines");
}

RegionFile cleaned(const OutlineFile& file, const Options& options, Progress& progress) {
    progress.start("cleaning outlines", workOf(file.outlines));
    return takeRegions(file, options.outerHull ? gmContourDefs::eOuterHull : gmContourDefs::eRegularize, progress);
}

/// "3 of 12 outlines crossed themselves": each hole is an outline, and lines are none.
std::string summaryOf(const RegionFile& file) {
    const std::vector<Outline>& outlines = file.file.outlines;
    const auto closed =
        std::count_if(outlines.begin(), outlines.end(), [](const Outline& outline) { return outline.isClosed(); });
    return std::to_string(file.replaced.size()) + " of " +
           counted(static_cast<std::size_t>(closed), "outline", "outlines") + " crossed " +
           (file.replaced.size() == 1 ? "itself\n" : "themselves\n");
}

void run(const Options& options) {
    checkNames(options);
    std::string summary;
    std::optional<PendingFile> out;
    std::optional<PendingFile> picture;
    {
        Progress progress(std::cerr, ::isatty(STDERR_FILENO) == 1);
        progress.start("reading " + printable(options.in, 40), 0.0);
        const OutlineFile before = readOutlines(options.in);
        const RegionFile after = cleaned(before, options, progress);
        summary = summaryOf(after);
        // Everything that may go wrong goes wrong before the first output is visible, as far as that can be.
        out.emplace(options.out, textFor(options.out, after.file.outlines));
        if (!options.svg.empty()) {
            std::ostringstream svg;
            writeBeforeAndAfter(svg, before, after);
            picture.emplace(options.svg, svg.str());
        }
    }
    writeStandardOutput(summary);
    out->commit();
    if (picture)
        picture->commit();
}

}  // namespace

void addRegularize(CLI::App& program) {
    CLI::App* const command =
        program.add_subcommand("regularize", "Replace the outlines of a file that cross themselves");
    const auto options = std::make_shared<Options>();
    command->add_option("IN", options->in, "a GeoJSON or WKT file")->required()->type_name("");
    command->add_option("-o,--output", options->out, "where the outlines go; .geojson, .json or .wkt")
        ->required()
        ->type_name("OUT");
    command->add_flag("--outer-hull", options->outerHull, "keep the outermost loops only");
    command->add_option("--svg", options->svg, "also draw the outlines before and after into this SVG picture")
        ->type_name("OUT.svg");
    command->footer(
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
        "Examples:\n"
        "  mokshape regularize samples/lasso.geojson -o simple.geojson --svg lasso.svg\n"
        "  mokshape regularize samples/lasso.geojson -o hull.wkt --outer-hull\n");
    command->callback([options] { run(*options); });
}

}  // namespace mokshape
