#include "tools/mokshape/rewrite.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

#include "tools/io/file.h"
#include "tools/io/text.h"
#include "tools/mokshape/notes.h"
#include "tools/mokshape/picture.h"
#include "tools/mokshape/progress.h"

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

void run(const Options& options, const RewriteCommand& command) {
    checkNames(options);
    std::string summary;
    Notes notes;
    Notes lost;
    std::optional<PendingFile> out;
    std::optional<PendingFile> picture;
    {
        Progress progress(std::cerr, ::isatty(STDERR_FILENO) == 1);
        progress.start("reading " + printable(options.in, 40), 0.0);
        const OutlineFile before = readOutlines(options.in);
        const Rewritten after = command.rewrite(
            before, options.outerHull ? gmContourDefs::eOuterHull : gmContourDefs::eRegularize, progress);
        summary = after.summary;
        notes = before.notes;
        out.emplace(options.out, textFor(options.out, after.outlines, &lost));
        if (!options.svg.empty()) {
            std::ostringstream svg;
            writeBeforeAndAfter(svg, before, after.outlines, after.replaced);
            picture.emplace(options.svg, svg.str());
        }
    }
    writeStandardOutput(summary);
    out->commit();
    if (picture)
        picture->commit();
    printNotes(options.in, notes);
    printNotes(options.out, lost);
}

}  // namespace

void addRewrite(CLI::App& program, const RewriteCommand& command) {
    CLI::App* const subcommand = program.add_subcommand(command.name, command.description);
    const auto options = std::make_shared<Options>();
    subcommand->add_option("IN", options->in, "a GeoJSON or WKT file, or an archive")->required()->type_name("");
    subcommand->add_option("-o,--output", options->out, "where the outlines go; .geojson, .json, .wkt or .mok")
        ->required()
        ->type_name("OUT");
    subcommand->add_flag("--outer-hull", options->outerHull, command.outerHullHelp);
    subcommand->add_option("--svg", options->svg, "also draw the outlines before and after into this SVG picture")
        ->type_name("OUT.svg");
    subcommand->footer(command.footer);
    subcommand->callback([options, command] { run(*options, command); });
}

}  // namespace mokshape
