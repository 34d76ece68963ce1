#pragma once

namespace CLI {
class App;
}

namespace mokshape {

/// Adds the subcommand `measure` to the program.
void addMeasure(CLI::App& program);

}  // namespace mokshape
