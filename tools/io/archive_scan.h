#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "tools/io/outline.h"

namespace mokshape {

/// Archives begin with it.
constexpr std::string_view archiveMagic = "MOKA";

/// Where and why an archive cannot be read. The message names the byte and the place: "byte 38, object 3, gmRegion,
/// holes, element 2: ...".
class ArchiveFault : public FileError {
  public:
    ArchiveFault(std::size_t at, std::size_t readUpTo, const std::string& message)
        : FileError(message), at_(at), readUpTo_(readUpTo) {}

    /// The byte where that begins which cannot be; the end of the archive when it ends too early within something.
    std::size_t at() const { return at_; }
    /// How far a reader gets that stops as soon as it can know.
    std::size_t readUpTo() const { return readUpTo_; }

  private:
    std::size_t at_;
    std::size_t readUpTo_;
};

/// What a scan tells: byte, level of nesting, and what stands there.
using ArchiveLine = std::function<void(std::size_t byte, std::size_t level, const std::string& text)>;

struct ArchiveScan {
    /// A pointer that stands in the archive itself and not in an object.
    struct Root {
        std::size_t byte = 0;
        std::size_t object = 0;  ///< from 1 in the order in which objects begin; 0 for null
    };

    std::vector<Root> roots;
    std::size_t objects = 0;
    std::optional<ArchiveFault> fault;
};

struct ArchiveScanOptions {
    /// Classes whose contents the archive begins with, before the first pointer. Those of archiveLayouts().
    std::vector<std::string> parts = {};
    /// Every vertex and edge point, and not only the first few of each shape.
    bool all = false;
};

/// Reads an archive without the library, up to its end or to where it is damaged: contents of the parts, then pointers.
/// Accepts what the library loads, and nothing else. `line`, if any, is called for everything as it is met.
/// Cost: O(n), in memory as well; the stack is bounded by the library's limit of nested objects.
ArchiveScan scanArchive(std::string_view bytes, const ArchiveLine& line, const ArchiveScanOptions& options);

}  // namespace mokshape
