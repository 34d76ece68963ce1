#include "tools/mokshape/inside.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "tools/io/file.h"
#include "tools/io/text.h"
#include "tools/mokshape/answers.h"
#include "tools/mokshape/options.h"
#include "tools/mokshape/points.h"
#include "tools/mokshape/progress.h"

namespace mokshape {

namespace {

struct Options {
    std::vector<std::string> files;
    std::vector<std::string> points;
    std::string mode = "keep";
    std::string format = "table";
};

std::vector<gmVector<2>> pointsOf(const std::vector<std::string>& texts) {
    std::vector<gmVector<2>> points;
    for (const std::string& text : texts) {
        const std::optional<gmVector<2>> point = parsePoint(text);
        if (!point)
            throw FileError("--point: X,Y of two finite numbers is expected, not '" + printable(text, 60) + '\'');
        points.push_back(*point);
    }
    return points;
}

std::vector<gmVector<2>> pointsOfStandardInput() {
    const std::string text = readStandardInput();
    try {
        std::vector<gmVector<2>> points = readPoints(text);
        if (points.empty())
            throw FileError("no point in it");
        return points;
    } catch (const FileError& error) {
        throw FileError(std::string("standard input: ") + error.what());
    }
}

void run(const Options& options) {
    const std::vector<gmVector<2>> given = pointsOf(options.points);
    std::ostringstream report;
    {
        Progress progress(std::cerr, ::isatty(STDERR_FILENO) == 1);
        const std::vector<RegionFile> files = readRegions(options.files, modeOf(options.mode), progress);
        progress.start("reading points", 0.0);
        const std::vector<gmVector<2>> points = options.points.empty() ? pointsOfStandardInput() : given;
        progress.start("asking", static_cast<double>(points.size()));
        std::vector<Answer> answers;
        for (const gmVector<2>& point : points) {
            const std::vector<Answer> some = askRegions(point, files);
            answers.insert(answers.end(), some.begin(), some.end());
            progress.advance(1.0);
        }
        writeAnswers(report, formatOf(options.format), answers, points.size(), files.size() > 1);
    }
    writeStandardOutput(report.str());
}

}  // namespace

void addInside(CLI::App& program) {
    CLI::App* const command = program.add_subcommand("inside", "Say which regions of some files hold a point");
    const auto options = std::make_shared<Options>();
    command->add_option("FILE", options->files, "GeoJSON or WKT files, or archives")->required()->type_name("");
    command->add_option("--point", options->points, "a point to ask for; may be given again")
        ->type_name("X,Y")
        ->allow_extra_args(false);
    addMode(*command, options->mode);
    addFormat(*command, options->format);
    command->footer(
        "Each polygon is a region, without what its holes cut out; lines are no regions.\n"
        "For each point there is a row for every region that holds it, or one that says\n"
        "that none does and names the region with the nearest boundary. The last column is\n"
        "the distance to the region's nearest boundary, be it the outline or a hole.\n"
        "Points too close to a boundary, about a millionth, may count as on either side.\n"
        "\n"
        "Without --point the points come from standard input, one a line: X,Y or X Y.\n"
        "Empty lines and lines that start with # are skipped.\n"
        "\n"
        "Outlines and holes that cross themselves are kept, where what they run around\n"
        "twice is outside, or replaced first: see mokshape measure --help.\n"
        "\n"
        "Examples:\n"
        "  mokshape inside samples/coins.geojson --point 45,70 --point 100,100\n"
        "  mokshape inside samples/coins.geojson --format csv < points.txt\n");
    command->callback([options] { run(*options); });
}

}  // namespace mokshape
