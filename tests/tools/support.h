// What the tests of the tools share: outlines as text, errors as text, files and programs.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tools/io/outline.h"
#include "tools/mokshape/measures.h"

namespace support {

/// "2.1.1 outer label 7: 0 0, 4 0, 4 3": feature, part and ring, one line an outline.
std::string text(const std::vector<mokshape::Outline>& outlines);

/// What the program makes of such a file, without showing its progress.
mokshape::RegionFile taken(const std::string& name, std::vector<mokshape::Outline> outlines,
                           gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep);
mokshape::RegionFile taken(const std::string& wkt, gmContourDefs::IntersectionMode mode = gmContourDefs::eKeep);
mokshape::MeasuredFile measured(mokshape::RegionFile regions);

/// The message of the FileError that the call throws; a text that says so when it throws none.
template <class Call>
std::string fileErrorOf(Call call) {
    try {
        call();
    } catch (const mokshape::FileError& error) {
        return error.what();
    }
    return "no error";
}

/// Without their ends.
std::vector<std::string> linesOf(const std::string& text);

std::string readWhole(const std::string& path);
void writeWhole(const std::string& path, const std::string& bytes);

/// A new folder for each test, gone after it.
class InFolder : public testing::Test {
  protected:
    InFolder();
    ~InFolder() override;

    std::string path(const std::string& name) const { return folder_ + '/' + name; }
    /// Writes the file and gives its path.
    std::string write(const std::string& name, const std::string& bytes) const;
    /// The names of the files in the folder, in order.
    std::vector<std::string> names() const;

    struct Run {
        int status = -1;
        std::string out;
        std::string err;
    };
    /// Runs the shell command in the folder.
    Run runShell(const std::string& command) const;
    /// Runs mokshape with these arguments, as the shell splits them, in the folder.
    Run run(const std::string& arguments) const;

  private:
    std::string folder_;
};

}  // namespace support
