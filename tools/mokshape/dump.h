#pragma once

namespace CLI {
class App;
}

namespace mokshape {

/// Adds the subcommand `dump` to the program.
void addDump(CLI::App& program);

}  // namespace mokshape
