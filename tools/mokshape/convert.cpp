#include "tools/mokshape/convert.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>
#include <string>

#include "tools/io/file.h"
#include "tools/io/text.h"
#include "tools/mokshape/notes.h"
#include "tools/mokshape/progress.h"

namespace mokshape {

namespace {

struct Options {
    std::string in;
    std::string out;
};

void run(const Options& options) {
    checkForm(options.out);
    if (isSameFile(options.in, options.out))
        throw FileError(printable(options.out) + ": the output would replace the file that is read");
    OutlineFile file;
    Notes lost;
    std::optional<PendingFile> out;
    {
        Progress progress(std::cerr, ::isatty(STDERR_FILENO) == 1);
        progress.start("reading " + printable(options.in, 40), 0.0);
        file = readOutlines(options.in);
        progress.start("writing " + printable(options.out, 40), 0.0);
        out.emplace(options.out, textFor(options.out, file.outlines, &lost));
    }
    out->commit();
    printNotes(options.in, file.notes);
    printNotes(options.out, lost);
}

}  // namespace

void addConvert(CLI::App& program) {
    CLI::App* const command = program.add_subcommand("convert", "Write the outlines of a file in another form");
    const auto options = std::make_shared<Options>();
    command->add_option("IN", options->in, "a GeoJSON or WKT file, or an archive")->required()->type_name("");
    command->add_option("OUT", options->out, "where the outlines go; .geojson, .json, .wkt or .mok")
        ->required()
        ->type_name("");
    command->footer(
        "The outlines, their order and their labels are kept, and every number to the bit.\n"
        "What the other form has no place for is named on standard error; what it cannot\n"
        "hold, like an outline of two vertices, is refused, and nothing is written.\n"
        "\n"
        "An archive (.mok) holds a shape for each feature: a polygon is a gmRegion with its\n"
        "holes, a MultiPolygon a gmRegionSet, a line an open gmContour. Features of several\n"
        "lines, or of lines and polygons, become a feature for each. A file of another name\n"
        "that begins like an archive is read as one. Read are all archives that hold one\n"
        "shape after the other behind pointers: those that this program writes, and those\n"
        "of applications that archive handles. Closed contours are polygons, regions in\n"
        "holes of holes are further polygons of the feature, and shapes with edge points\n"
        "are read as plain ones. Holes may touch their outline, as in the other forms: the\n"
        "library loads them, but would not set them.\n"
        "\n"
        "A set of regions with different labels becomes a GeoJSON feature for each of them.\n"
        "WKT has no place for labels.\n"
        "\n"
        "Examples:\n"
        "  mokshape convert samples/coins.geojson coins.mok\n"
        "  mokshape convert coins.mok coins.wkt\n");
    command->callback([options] { run(*options); });
}

}  // namespace mokshape
