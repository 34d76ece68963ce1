#pragma once

#include <string_view>
#include <vector>

namespace mokshape {

/// A piece of a class's content in an archive.
struct ArchiveField {
    enum class Kind {
        ePart,        ///< the block of a base class, with a version of its own
        eUnsigned,    ///< 32 bits
        eCount,       ///< 32 bits with a sign, never negative
        eFlag,        ///< a byte, 0 or 1
        eUnusedByte,  ///< any byte
        eNumber,      ///< a double
        ePosition,    ///< two doubles
        eText,        ///< a length and its bytes
        eVertices,    ///< a vector block of positions
        eEdgePoints,  ///< a vector block of edge points, as many as the vertices read last
        eObject,      ///< a pointer
        eObjects,     ///< a vector block of pointers
    };

    const char* name;
    Kind kind;
    const char* className = "";  ///< of the part, or of what pointers lead to; others are loaded as empty handles
};

/// What an archive holds of a class: a version byte, and the fields of that version.
struct ArchiveLayout {
    const char* className;
    bool isRegistered;  ///< pointers may lead to one
    const char* base;   ///< the class that handles may ask for instead
    std::vector<std::vector<ArchiveField>> versions;
};

/// Deliberate: a description of its own of what the library reads and writes, so that it can say where and why that
/// refuses. Tests hold the two to the same verdict.
const std::vector<ArchiveLayout>& archiveLayouts();

/// Null for a class that no archive holds.
const ArchiveLayout* findLayout(std::string_view className);

}  // namespace mokshape
