#include "tools/mokshape/measure.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
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
#include "tools/mokshape/picture.h"
#include "tools/mokshape/progress.h"
#include "tools/mokshape/report.h"

namespace mokshape {

namespace {

struct Options {
    std::vector<std::string> files;
    std::string format = "table";
    std::string svg;
};

Format formatOf(const std::string& name) {
    if (name == "json")
        return Format::eJson;
    return name == "csv" ? Format::eCsv : Format::eTable;
}

std::vector<MeasuredFile> measureFiles(const std::vector<std::string>& names) {
    Progress progress(std::cerr, ::isatty(STDERR_FILENO) == 1);
    std::vector<OutlineFile> files;
    for (const std::string& name : names) {
        progress.start("reading " + printable(name, 40), 0.0);
        files.push_back(readOutlines(name));
    }
    double work = 0.0;
    for (const OutlineFile& file : files)
        for (const Outline& outline : file.outlines)
            work += workOf(outline);
    progress.start("measuring", work);
    std::vector<MeasuredFile> measured;
    for (OutlineFile& file : files)
        measured.push_back(measure(std::move(file), progress));
    return measured;
}

void run(const Options& options) {
    for (const std::string& file : options.files)
        if (!options.svg.empty() && isSameFile(file, options.svg))
            throw FileError(printable(options.svg) + ": the picture would replace a file that is measured");
    const std::vector<MeasuredFile> files = measureFiles(options.files);
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
    CLI::App* const command = program.add_subcommand("measure", "Measure every outline of some files");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->files, "GeoJSON or WKT files")->required()->type_name("");
    command->add_option("--format", options->format, "how to write the measures")
        ->check(CLI::IsMember({"table", "json", "csv"}).description(""))
        ->type_name("table|json|csv")
        ->capture_default_str();
    command->add_option("--svg", options->svg, "also draw the outlines into this SVG picture")->type_name("OUT.svg");
    command->footer(
        "Each ring of a polygon and each line is measured by itself, in the units of its\n"
        "coordinates: vertices, length, area, centre, bounding box, diameter (the largest\n"
        "distance between two vertices), the axes and the angle in degrees of the ellipse\n"
        "fitted to the vertices, and whether it crosses itself. The property \"label\" of a\n"
        "GeoJSON feature is its label. The table is rounded to about five digits; the\n"
        "numbers of json and csv are exact and read back as the same. What does not exist,\n"
        "like the area of a line, is \"-\", null or empty.\n"
        "\n"
        "Example:\n"
        "  mokshape measure samples/coins.geojson --svg coins.svg\n"
        "  mokshape measure parts.geojson more.wkt --format csv > parts.csv\n");
    command->callback([options] { run(*options); });
}

}  // namespace mokshape
