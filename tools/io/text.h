#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace mokshape {

/// The number that the whole text spells, whatever the locale; none for anything else, NaN and infinities included.
/// Rounded to the nearest double, to 0 where it is too small for one.
std::optional<double> parseNumber(std::string_view text);

/// The shortest text that parseNumber reads back as the same double, whatever the locale.
std::string formatNumber(double value);

/// The number with so many digits after the point, for people. Never "-0".
std::string formatFixed(double value, int decimals);

/// The number with so many significant digits, with an exponent where it is very large or small.
std::string formatSignificant(double value, int digits);

/// The text without the byte order mark that it may begin with.
std::string_view withoutByteOrderMark(std::string_view text);

/// The text with control characters replaced, cut to `longest` bytes, so that what a file or a path holds can be
/// shown on a terminal.
std::string printable(std::string_view text, std::size_t longest = 4096);

/// The text with every byte that is not printable ASCII as \xNN and the backslash doubled, cut to `longest` bytes of
/// the original: nothing that differs looks the same.
std::string escaped(std::string_view text, std::size_t longest);

/// "1 outline", "2 outlines".
std::string counted(std::size_t count, const char* one, const char* many);

}  // namespace mokshape
