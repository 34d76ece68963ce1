#include "tools/mokshape/rewrite.h"

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <utility>

#include "tools/io/file.h"
#include "tools/io/geojson.h"
#include "tools/io/grouping.h"
#include "tools/io/text.h"
#include "tools/mokshape/notes.h"
#include "tools/mokshape/picture.h"
#include "tools/mokshape/progress.h"
#include "tools/mokshape/stream.h"

namespace mokshape {

namespace {

struct Options {
    std::string in;
    std::string out;
    std::string svg;
    bool outerHull = false;
    StreamOptions stream;
};

gmContourDefs::IntersectionMode modeOf(const Options& options) {
    return options.outerHull ? gmContourDefs::eOuterHull : gmContourDefs::eRegularize;
}

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
        const Rewritten after = command.rewrite(before, modeOf(options), progress);
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

/// Outlines of one feature as a Feature of their own.
FeatureText featureOf(const std::vector<Outline>& outlines) {
    FeatureText feature;
    for (const Feature& group : groupByFeature(outlines))
        if (!group.hasOneLabel(outlines))
            throw FileError("the regions have different labels, and a Feature has one");
    if (!outlines.empty())
        feature.members.push_back({"properties", "\"properties\"", propertiesText(outlines.front().label)});
    feature.geometry = geometryText(outlines);
    return feature;
}

/// Puts these outlines in the place of the geometry. A box around it may not hold for them.
void replaceGeometry(FeatureText& feature, const std::vector<Outline>& outlines) {
    feature.geometry = geometryText(outlines);
    std::vector<FeatureText::Member>& members = feature.members;
    members.erase(std::remove_if(members.begin(), members.end(),
                                 [](const FeatureText::Member& member) { return member.name == "bbox"; }),
                  members.end());
}

/// What is not replaced comes back as it stands in the text.
std::string answerTo(StreamFeature& feature, const RewriteCommand& command, gmContourDefs::IntersectionMode mode) {
    Progress progress(std::cerr, false);
    std::vector<Outline> outlines;
    bool isReplaced = false;
    forEachShape(feature, [&](std::vector<Outline> shape) {
        Rewritten after = command.rewrite({"", std::move(shape)}, mode, progress);
        std::move(after.outlines.begin(), after.outlines.end(), std::back_inserter(outlines));
        isReplaced = isReplaced || !after.replaced.empty();
    });
    if (!feature.text)
        return textOf(featureOf(outlines));
    if (isReplaced)
        replaceGeometry(*feature.text, outlines);
    return textOf(*feature.text);
}

void runAsStream(const Options& options, const RewriteCommand& command, const CLI::App& subcommand) {
    checkStream(subcommand, {"--output", "--svg"});
    runStream(options.stream,
              [&command, mode = modeOf(options)](StreamFeature& feature) { return answerTo(feature, command, mode); });
}

}  // namespace

void addRewrite(CLI::App& program, const RewriteCommand& command) {
    CLI::App* const subcommand = program.add_subcommand(command.name, command.description);
    const auto options = std::make_shared<Options>();
    const std::string files = "a GeoJSON or WKT file, or an archive";
    subcommand->add_option("IN", options->in, command.takesStream ? files + "; - for a stream" : files)
        ->required()
        ->type_name("");
    CLI::Option* const output =
        subcommand->add_option("-o,--output", options->out, "where the outlines go; .geojson, .json, .wkt or .mok")
            ->type_name("OUT");
    subcommand->add_flag("--outer-hull", options->outerHull, command.outerHullHelp);
    subcommand->add_option("--svg", options->svg, "also draw the outlines before and after into this SVG picture")
        ->type_name("OUT.svg");
    if (command.takesStream)
        addStream(*subcommand, options->stream);
    else
        output->required();
    subcommand->footer(command.footer);
    subcommand->callback([options, command, subcommand, output] {
        if (command.takesStream && options->in == streamName)
            return runAsStream(*options, command, *subcommand);
        if (command.takesStream)
            checkNoStream(*subcommand);
        if (output->empty())
            throw CLI::RequiredError(output->get_name());
        run(*options, command);
    });
}

}  // namespace mokshape
