#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "foundation/math/vector.h"

namespace mokshape {

/// One ring of a polygon or one line, as it stands in a file. The rings of one polygon follow each other, the outer
/// ring first, and share feature and part.
struct Outline {
    enum class Kind { eOuter, eHole, eLine };

    std::size_t feature = 1;  ///< number of the feature in the file, from 1
    std::size_t part = 1;     ///< number of the polygon or line in the feature, from 1
    std::size_t ring = 1;     ///< number of the ring in the polygon: 1 is the outer ring, the holes follow
    Kind kind = Kind::eOuter;
    std::uint32_t label = 0;
    /// Without the repetition of the first position that files put at the end of a ring. An empty polygon or line is
    /// one outline without a point.
    std::vector<gmVector<2>> points;

    bool isClosed() const { return kind != Kind::eLine; }
};

/// What is lost on the way from one form to another, for people: one sentence each, without a full stop.
using Notes = std::vector<std::string>;

/// Adds "1 <one>" or "<count> <many>", unless the count is 0 or nobody wants notes.
void addNote(Notes* notes, std::size_t count, const char* one, const char* many);

/// The outlines of one file, in its order.
struct OutlineFile {
    std::string name;
    std::vector<Outline> outlines;
    Notes notes = {};  ///< what the file holds besides
};

/// A file cannot be read, does not hold what it should, or cannot be written. The message is for the user.
class FileError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

/// "feature 3, part 2, ring 1": where an error message points to. What is 0 is left out.
std::string placeText(std::size_t feature, std::size_t part = 0, std::size_t ring = 0);

/// Takes a ring as files hold it into the outline: checks that it is closed and has at least four positions, and
/// drops the last one. Throws: FileError that starts with the outline's place.
void takeRing(Outline& outline, std::vector<gmVector<2>> positions);

/// Takes a line as files hold it. Throws: FileError for a line of one position.
void takeLine(Outline& outline, std::vector<gmVector<2>> positions);

}  // namespace mokshape
