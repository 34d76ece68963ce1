#include "tools/mokshape/points.h"

#include <cstddef>
#include <string>

#include "tools/io/outline.h"
#include "tools/io/text.h"

namespace mokshape {

namespace {

constexpr std::string_view blanks = " \t\r";
constexpr std::size_t longestQuote = 60;

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

}  // namespace

std::optional<gmVector<2>> parsePoint(std::string_view text) {
    const std::string_view numbers = trimmed(text);
    const std::size_t comma = numbers.find(',');
    const std::size_t gap = comma != std::string_view::npos ? comma : numbers.find_first_of(blanks);
    if (gap == std::string_view::npos)
        return std::nullopt;
    const std::optional<double> x = parseNumber(trimmed(numbers.substr(0, gap)));
    const std::optional<double> y = parseNumber(trimmed(numbers.substr(gap + 1)));
    return x && y ? std::optional(gmVector<2>(*x, *y)) : std::nullopt;
}

std::vector<gmVector<2>> readPoints(std::string_view text) {
    text = withoutByteOrderMark(text);
    std::vector<gmVector<2>> points;
    for (std::size_t number = 1; !text.empty(); ++number) {
        const std::size_t end = text.find('\n');
        const std::string_view line = trimmed(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        if (line.empty() || line.front() == '#')
            continue;
        const std::optional<gmVector<2>> point = parsePoint(line);
        if (!point)
            throw FileError("line " + std::to_string(number) +
                            ": a point X,Y of two finite numbers is expected, not '" + printable(line, longestQuote) +
                            '\'');
        points.push_back(*point);
    }
    return points;
}

}  // namespace mokshape
