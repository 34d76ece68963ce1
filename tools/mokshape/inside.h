#pragma once

namespace CLI {
class App;
}

namespace mokshape {

/// Adds the subcommand `inside` to the program.
void addInside(CLI::App& program);

}  // namespace mokshape
