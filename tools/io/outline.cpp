#include "tools/io/outline.h"

#include <utility>

#include "tools/io/text.h"

namespace mokshape {

namespace {

std::string positionText(const gmVector<2>& position) {
    return '(' + formatNumber(position.x()) + ", " + formatNumber(position.y()) + ')';
}

}  // namespace

void addNote(Notes* notes, std::size_t count, const char* one, const char* many) {
    if (notes && count > 0)
        notes->push_back(counted(count, one, many));
}

std::string placeText(std::size_t feature, std::size_t part, std::size_t ring) {
    std::string text;
    const auto add = [&text](const char* what, std::size_t number) {
        if (number > 0)
            text += (text.empty() ? "" : ", ") + std::string(what) + ' ' + std::to_string(number);
    };
    add("feature", feature);
    add("part", part);
    add("ring", ring);
    return text;
}

void takeRing(Outline& outline, std::vector<gmVector<2>> positions) {
    constexpr std::size_t fewest = 4;
    const auto refuse = [&outline](const std::string& why) {
        throw FileError(placeText(outline.feature, outline.part, outline.ring) + ": " + why);
    };
    if (positions.size() < fewest)
        refuse("a ring needs at least 4 positions, the last repeating the first, and this one has " +
               std::to_string(positions.size()));
    if (positions.front() != positions.back())
        refuse("the ring is not closed: it starts at " + positionText(positions.front()) + " and ends at " +
               positionText(positions.back()));
    positions.pop_back();
    outline.points = std::move(positions);
}

void takeLine(Outline& outline, std::vector<gmVector<2>> positions) {
    if (positions.size() == 1)
        throw FileError(placeText(outline.feature, outline.part) + ": a line needs at least 2 positions");
    outline.points = std::move(positions);
}

}  // namespace mokshape
