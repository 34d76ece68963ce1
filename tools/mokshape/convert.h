#pragma once

namespace CLI {
class App;
}

namespace mokshape {

/// Adds the subcommand `convert` to the program.
void addConvert(CLI::App& program);

}  // namespace mokshape
