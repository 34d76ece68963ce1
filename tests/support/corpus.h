// Outlines that once broke something or are known traps, kept as text under tests/data, a file each.
#pragma once

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/reference/outline.h"
#include "tests/support/text.h"

namespace support {

struct CorpusEntry {
    std::string name;
    std::string reason;
    reference::Outline outline;
};

/// Lines starting with # say why the outline is kept; then "closed" or "open"; then a vertex a line.
inline CorpusEntry readCorpusEntry(const std::filesystem::path& path) {
    CorpusEntry entry;
    entry.name = path.stem().string();
    std::ifstream file(path);
    std::string line;
    while (std::getline(file, line) && !line.empty() && line[0] == '#')
        entry.reason += line.substr(1);
    if (line != "closed" && line != "open")
        throw std::invalid_argument(path.string() + ": neither closed nor open");
    entry.outline.closed = line == "closed";
    while (std::getline(file, line))
        entry.outline.points.push_back(points(line).at(0));
    return entry;
}

/// All entries, by name.
inline std::vector<CorpusEntry> corpus(const std::filesystem::path& folder) {
    std::vector<CorpusEntry> entries;
    for (const auto& file : std::filesystem::directory_iterator(folder))
        if (file.path().extension() == ".txt")
            entries.push_back(readCorpusEntry(file.path()));
    std::sort(entries.begin(), entries.end(),
              [](const CorpusEntry& a, const CorpusEntry& b) { return a.name < b.name; });
    return entries;
}

}  // namespace support
