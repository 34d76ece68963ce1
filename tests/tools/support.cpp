#include "tests/tools/support.h"

#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "tools/io/text.h"
#include "tools/io/wkt.h"
#include "tools/mokshape/progress.h"

namespace support {

namespace fs = std::filesystem;

std::string text(const std::vector<mokshape::Outline>& outlines) {
    std::string result;
    for (const mokshape::Outline& outline : outlines) {
        result +=
            std::to_string(outline.feature) + '.' + std::to_string(outline.part) + '.' + std::to_string(outline.ring);
        result += outline.kind == mokshape::Outline::Kind::eOuter  ? " outer"
                  : outline.kind == mokshape::Outline::Kind::eHole ? " hole"
                                                                   : " line";
        result += " label " + std::to_string(outline.label) + ':';
        const char* separator = " ";
        for (const gmVector<2>& point : outline.points) {
            result += separator + mokshape::formatNumber(point.x()) + ' ' + mokshape::formatNumber(point.y());
            separator = ", ";
        }
        result += '\n';
    }
    return result;
}

mokshape::RegionFile taken(const std::string& name, std::vector<mokshape::Outline> outlines,
                           gmContourDefs::IntersectionMode mode) {
    std::ostringstream nowhere;
    mokshape::Progress progress(nowhere, false);
    return mokshape::takeRegions({name, std::move(outlines)}, mode, progress);
}

mokshape::RegionFile taken(const std::string& wkt, gmContourDefs::IntersectionMode mode) {
    return taken("a.wkt", mokshape::readWkt(wkt), mode);
}

mokshape::MeasuredFile measured(mokshape::RegionFile regions) {
    std::ostringstream nowhere;
    mokshape::Progress progress(nowhere, false);
    return mokshape::measure(std::move(regions), progress);
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::istringstream in(text);
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

std::string readWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        throw std::runtime_error("no file " + path);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void writeWhole(const std::string& path, const std::string& bytes) {
    std::ofstream file(path, std::ios::binary);
    if (!(file << bytes).flush())
        throw std::runtime_error("cannot write " + path);
}

InFolder::InFolder() {
    std::string pattern = (fs::temp_directory_path() / "mokshape-test-XXXXXX").string();
    if (!::mkdtemp(pattern.data()))
        throw std::runtime_error("no folder for the test");
    folder_ = pattern;
}

InFolder::~InFolder() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

std::string InFolder::write(const std::string& name, const std::string& bytes) const {
    writeWhole(path(name), bytes);
    return path(name);
}

std::vector<std::string> InFolder::names() const {
    std::vector<std::string> result;
    for (const auto& entry : fs::directory_iterator(folder_))
        result.push_back(entry.path().filename().string());
    std::sort(result.begin(), result.end());
    return result;
}

InFolder::Run InFolder::runShell(const std::string& command) const {
    const fs::path outputs = fs::path(folder_ + ".outputs");
    fs::create_directory(outputs);
    const std::string out = (outputs / "out").string();
    const std::string err = (outputs / "err").string();
    const int status =
        std::system(("cd '" + folder_ + "' && { " + command + "; } >'" + out + "' 2>'" + err + "'").c_str());
    Run run;
    run.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    run.out = readWhole(out);
    run.err = readWhole(err);
    fs::remove_all(outputs);
    return run;
}

InFolder::Run InFolder::run(const std::string& arguments) const {
    return runShell(std::string("'") + MOK_MOKSHAPE_PATH + "' " + arguments);
}

}  // namespace support
