#pragma once

namespace CLI {
class App;
}

namespace mokshape {

/// Adds the subcommand `regularize` to the program.
void addRegularize(CLI::App& program);

}  // namespace mokshape
