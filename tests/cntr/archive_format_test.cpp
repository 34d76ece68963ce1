// What docs/archive-format.md shows in bytes.
#include <gtest/gtest.h>

#include <cctype>
#include <fstream>
#include <string>

#include "tests/support/archives.h"
#include "tests/support/testregion.h"

namespace {

bool isByte(const std::string& word) {
    const auto digit = [](char c) { return std::isxdigit(static_cast<unsigned char>(c)) != 0; };
    return word.size() == 2 && digit(word[0]) && digit(word[1]);
}

/// The bytes at the start of the indented lines under the heading.
std::string bytesUnder(const std::string& heading) {
    std::ifstream page(MOK_DOCS_DIR "/archive-format.md");
    std::string line;
    while (std::getline(page, line) && line != heading) {
    }
    std::string bytes;
    while (std::getline(page, line) && line.rfind("##", 0) != 0) {
        std::istringstream words(line.rfind("    ", 0) == 0 ? line : "");
        for (std::string word; words >> word && isByte(word);)
            bytes += support::unhex(word);
    }
    return bytes;
}

TEST(ArchiveFormatPage, ShowsTheBytesOfARegionAsTheyAre) {
    gmPtrHandle<gmRegion> region(new gmRegion(support::points("0 0, 1 0, 0 1")));
    region->label(7);
    EXPECT_EQ(support::hex(bytesUnder("## An example")),
              support::hex(support::stored([&](gmArchive& archive) { archive || region; })));
}

}  // namespace
