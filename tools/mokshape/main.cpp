#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <new>
#include <sstream>

#include "tools/io/file.h"
#include "tools/mokshape/convert.h"
#include "tools/mokshape/dump.h"
#include "tools/mokshape/inside.h"
#include "tools/mokshape/measure.h"
#include "tools/mokshape/merge.h"
#include "tools/mokshape/regularize.h"

namespace {

/// Prints help or a usage error. Every error has exit status 1.
int answer(const CLI::App& program, const CLI::ParseError& request) {
    std::ostringstream out;
    const int status = program.exit(request, out, std::cerr);
    mokshape::writeStandardOutput(out.str());
    return status == 0 ? 0 : 1;
}

int run(int argc, char** argv) {
    CLI::App program("Measures, asks, cleans and merges outlines in GeoJSON and WKT files and archives.", "mokshape");
    program.set_version_flag("--version", "mokshape " MOKSHAPE_VERSION);
    program.require_subcommand(1);
    program.footer(
        "Examples:\n"
        "  mokshape measure samples/coins.geojson\n"
        "  mokshape inside samples/coins.geojson --point 45,70\n"
        "  mokshape regularize samples/lasso.geojson -o simple.geojson\n"
        "  mokshape merge parts.geojson -o merged.geojson\n"
        "  mokshape convert samples/coins.geojson coins.mok\n"
        "  mokshape dump coins.mok\n"
        "\n"
        "mokshape SUBCOMMAND --help tells more.\n");
    mokshape::addMeasure(program);
    mokshape::addInside(program);
    mokshape::addRegularize(program);
    mokshape::addMerge(program);
    mokshape::addConvert(program);
    mokshape::addDump(program);
    try {
        program.parse(argc, argv);
    } catch (const CLI::ParseError& request) {
        return answer(program, request);
    }
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::bad_alloc&) {
        std::cerr << "mokshape: out of memory\n";
    } catch (const std::exception& error) {
        std::cerr << "mokshape: " << error.what() << '\n';
    }
    return 1;
}
