#pragma once

#include <string>

#include "cntr/defs.h"

namespace CLI {
class App;
}

namespace mokshape {

enum class Format { eTable, eJson, eCsv };

/// Options that commands share, each with the text that it stands for. The texts live as long as the command.
void addFormat(CLI::App& command, std::string& text);
Format formatOf(const std::string& text);

void addMode(CLI::App& command, std::string& text);
gmContourDefs::IntersectionMode modeOf(const std::string& text);

}  // namespace mokshape
