#include "tools/mokshape/cells.h"

#include "tools/io/text.h"

namespace mokshape {

Json jsonNumber(const std::optional<double>& value) {
    return value ? Json(*value) : Json();
}

std::string jsonText(const Json& value) {
    // A path may hold any bytes, a JSON string only Unicode.
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string csvText(const std::string& value) {
    if (value.find_first_of("\",\r\n") == std::string::npos)
        return value;
    std::string quoted = "\"";
    for (const char c : value)
        quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + '"';
}

std::string csvNumber(const std::optional<double>& value) {
    return value ? formatNumber(*value) : std::string();
}

}  // namespace mokshape
