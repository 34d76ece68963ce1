#pragma once

namespace CLI {
class App;
}

namespace mokshape {

/// Adds the subcommand `merge` to the program.
void addMerge(CLI::App& program);

}  // namespace mokshape
