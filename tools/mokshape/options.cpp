#include "tools/mokshape/options.h"

#include <CLI/CLI.hpp>

namespace mokshape {

void addFormat(CLI::App& command, std::string& text) {
    command.add_option("--format", text, "how to write the answers")
        ->check(CLI::IsMember({"table", "json", "csv"}).description(""))
        ->type_name("table|json|csv")
        ->capture_default_str();
}

Format formatOf(const std::string& text) {
    if (text == "json")
        return Format::eJson;
    return text == "csv" ? Format::eCsv : Format::eTable;
}

void addMode(CLI::App& command, std::string& text) {
    command.add_option("--mode", text, "what becomes of outlines that cross themselves")
        ->check(CLI::IsMember({"keep", "regularize", "outer-hull"}).description(""))
        ->type_name("keep|regularize|outer-hull")
        ->capture_default_str();
}

gmContourDefs::IntersectionMode modeOf(const std::string& text) {
    if (text == "regularize")
        return gmContourDefs::eRegularize;
    return text == "outer-hull" ? gmContourDefs::eOuterHull : gmContourDefs::eKeep;
}

}  // namespace mokshape
