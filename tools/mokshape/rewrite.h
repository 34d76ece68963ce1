#pragma once

#include <functional>
#include <string>
#include <vector>

#include "cntr/defs.h"
#include "tools/io/outline.h"

namespace CLI {
class App;
}

namespace mokshape {

class Progress;

/// What became of a file, and what to say about it on standard output.
struct Rewritten {
    std::vector<Outline> outlines;
    std::vector<Outline> replaced;  ///< those of the file that others stand for now
    std::string summary;
};

/// A command that reads a file, makes other outlines of it and writes those.
struct RewriteCommand {
    const char* name;
    const char* description;
    const char* outerHullHelp;
    const char* footer;
    /// Gets eRegularize or eOuterHull.
    std::function<Rewritten(const OutlineFile&, gmContourDefs::IntersectionMode, Progress&)> rewrite;
    bool takesStream = false;  ///< rewrites features one by one where standard input is asked for
};

/// Adds the command to the program, with its options for the outputs and for the mode. No output is visible before
/// everything that may go wrong has gone well, as far as that can be; of a stream, of each record.
void addRewrite(CLI::App& program, const RewriteCommand& command);

}  // namespace mokshape
