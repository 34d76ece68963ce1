#include "tools/io/text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <system_error>

namespace mokshape {

namespace {

// Room for the longest fixed form: 309 digits before the point, a sign, a point and the decimals asked for.
using NumberBuffer = std::array<char, 352>;

template <class... Style>
std::string format(double value, Style... style) {
    NumberBuffer text;
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value, style...).ptr;
    return std::string(text.data(), end);
}

}  // namespace

std::string_view withoutByteOrderMark(std::string_view text) {
    constexpr std::string_view mark = "\xef\xbb\xbf";
    return text.substr(text.substr(0, mark.size()) == mark ? mark.size() : 0);
}

std::optional<double> parseNumber(std::string_view text) {
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && text.front() == '-')
            return std::nullopt;
    }
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    double value = 0.0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    if (stop != end || error == std::errc::invalid_argument)
        return std::nullopt;
    if (error == std::errc::result_out_of_range) {
        // Too large and too small are the same error: the wider type tells them apart.
        long double wide = 0.0L;
        const auto wideError = std::from_chars(begin, end, wide).ec;
        if (wideError != std::errc() || std::fabs(wide) > 1.0L)
            return std::nullopt;
        value = static_cast<double>(wide);
    }
    return std::isfinite(value) ? std::optional<double>(value) : std::nullopt;
}

std::string formatNumber(double value) {
    return format(value);
}

std::string formatFixed(double value, int decimals) {
    std::string text = format(value, std::chars_format::fixed, decimals);
    if (text.front() == '-' && text.find_first_not_of("-0.") == std::string::npos)
        text.erase(0, 1);
    return text;
}

std::string formatSignificant(double value, int digits) {
    return format(value, std::chars_format::general, digits);
}

std::string printable(std::string_view text, std::size_t longest) {
    std::string result(text.substr(0, longest));
    std::replace_if(
        result.begin(), result.end(),
        [](char c) {
            const auto byte = static_cast<unsigned char>(c);
            return byte < 0x20 || byte == 0x7f;
        },
        '?');
    if (text.size() > longest)
        result += "...";
    return result;
}

std::string escaped(std::string_view text, std::size_t longest) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string result;
    for (const char c : text.substr(0, longest)) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '\\')
            result += "\\\\";
        else if (byte >= 0x20 && byte < 0x7f)
            result += c;
        else
            result += {'\\', 'x', digits[byte / 16], digits[byte % 16]};
    }
    if (text.size() > longest)
        result += "...";
    return result;
}

std::string counted(std::size_t count, const char* one, const char* many) {
    return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

}  // namespace mokshape
