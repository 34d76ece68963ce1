#include "tools/mokshape/measure.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstddef>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "tools/io/file.h"
#include "tools/io/text.h"
#include "tools/mokshape/measures.h"
#include "tools/mokshape/options.h"
#include "tools/mokshape/picture.h"
#include "tools/mokshape/progress.h"
#include "tools/mokshape/report.h"
#include "tools/mokshape/stream.h"

namespace mokshape {

namespace {

struct Options {
    std::vector<std::string> files;
    std::string mode = "keep";
    std::string format = "table";
    std::string svg;
    StreamOptions stream;
};

std::vector<MeasuredFile> measureFiles(const Options& options) {
    Progress progress(std::cerr, ::isatty(STDERR_FILENO) == 1);
    std::vector<RegionFile> files = readRegions(options.files, modeOf(options.mode), progress);
    double work = 0.0;
    for (const RegionFile& file : files)
        work += workOf(file.file.outlines);
    progress.start("measuring", work);
    std::vector<MeasuredFile> measured;
    for (RegionFile& file : files)
        measured.push_back(measure(std::move(file), progress));
    return measured;
}

std::string answerTo(std::vector<Outline> shape, gmContourDefs::IntersectionMode mode) {
    Progress progress(std::cerr, false);
    RegionFile regions = takeRegions({"", std::move(shape)}, mode, progress);
    regions.file.name = streamName;
    return jsonOfShapes(measureSingly(std::move(regions), progress)).front();
}

/// The object of the report for a single shape; several, or none, are its list "outlines".
std::string answerTo(StreamFeature& feature, gmContourDefs::IntersectionMode mode) {
    std::size_t shapes = 0;
    std::string text;
    forEachShape(feature, [&](std::vector<Outline> shape) {
        text += (shapes++ > 0 ? "," : "") + answerTo(std::move(shape), mode);
    });
    return withId(feature.text, shapes == 1 ? std::move(text) : "{\"outlines\":[" + std::move(text) + "]}");
}

void runAsStream(const Options& options, const CLI::App& command) {
    if (options.files.size() > 1)
        throw FileError("-: standard input is measured by itself, without files");
    checkStream(command, {"--svg"});
    if (options.format != "json" && command.get_option("--format")->count() > 0)
        throw FileError("--format: standard input (-) is answered in json");
    const gmContourDefs::IntersectionMode mode = modeOf(options.mode);
    runStream(options.stream, [mode](StreamFeature& feature) { return answerTo(feature, mode); });
}

void run(const Options& options) {
    for (const std::string& file : options.files)
        if (!options.svg.empty() && isSameFile(file, options.svg))
            throw FileError(printable(options.svg) + ": the picture would replace a file that is measured");
    const std::vector<MeasuredFile> files = measureFiles(options);
    // Everything that may go wrong goes wrong before the first output is visible, as far as that can be.
    std::ostringstream report;
    writeReport(report, formatOf(options.format), files);
    std::optional<PendingFile> picture;
    if (!options.svg.empty()) {
        std::ostringstream svg;
        writePicture(svg, files);
        picture.emplace(options.svg, svg.str());
    }
    writeStandardOutput(report.str());
    if (picture)
        picture->commit();
}

}  // namespace

void addMeasure(CLI::App& program) {
    CLI::App* const command = program.add_subcommand("measure", "Measure every polygon and line of some files");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->files, "GeoJSON or WKT files, or archives; - for a stream")
        ->required()
        ->type_name("");
    addMode(*command, options->mode);
    addFormat(*command, options->format);
    command->add_option("--svg", options->svg, "also draw the outlines into this SVG picture")->type_name("OUT.svg");
    addStream(*command, options->stream);
    command->footer(
        "Each polygon is measured as a region with its holes, each line by itself, in the\n"
        "units of the coordinates. Of the outline alone: vertices, length, area, centre,\n"
        "bounding box, diameter (the largest distance between two vertices), and the axes\n"
        "and the angle in degrees of the ellipse fitted to the vertices. Then the number\n"
        "of holes, and area and centre of what they leave. Last, whether the outline or a\n"
        "hole crosses itself. Holes must not touch the outline. The property \"label\" of a\n"
        "GeoJSON feature is its label. The table is rounded to about five digits; the\n"
        "numbers of json and csv are exact and read back as the same. What does not exist,\n"
        "like the area of a line, is \"-\", null or empty.\n"
        "\n"
        "The last row of a file, \"all\", is its polygons together: sums, common centres,\n"
        "the box around them, and whether an outline crosses itself or another. Where they\n"
        "overlap, each counts. Below are the second moments of their outlines about the\n"
        "common centre: the integrals over the area of x*x, x*y and y*y from there. In json\n"
        "the polygons together stand under \"sets\", in csv they are of the kind \"set\".\n"
        "\n"
        "Outlines and holes that cross themselves are measured as they are, or after they\n"
        "were replaced (\"cleaned\"): regularize takes their outer boundary, traced once\n"
        "around; outer-hull takes of this the outermost loops only. The picture then shows\n"
        "them faintly as they were: look at it where an outline winds around something\n"
        "more than once, of which the trace may leave out large parts.\n"
        "\n"
        "With - alone, standard input is a stream: one GeoJSON feature or geometry a line,\n"
        "or archives (--input mok), each after its length in four bytes, the lowest first.\n"
        "Each is answered at once with a line: the object that json has for its polygon or\n"
        "line, or {\"outlines\": [...]} where it has several or none, with the feature's id.\n"
        "The first that is refused ends the run; with --keep-going it is answered with\n"
        "{\"error\": ...}, and the exit status is 1 at the end.\n"
        "\n"
        "Examples:\n"
        "  mokshape measure samples/coins.geojson --svg coins.svg\n"
        "  mokshape measure samples/lasso.geojson --mode regularize\n"
        "  mokshape measure parts.geojson more.wkt --format csv > parts.csv\n"
        "  mokshape measure - --keep-going < parts.geojsonl > parts.jsonl\n");
    command->callback([options, command] {
        if (std::count(options->files.begin(), options->files.end(), streamName) > 0)
            return runAsStream(*options, *command);
        checkNoStream(*command);
        run(*options);
    });
}

}  // namespace mokshape
