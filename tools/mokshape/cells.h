#pragma once

#include <nlohmann/json.hpp>
#include <optional>
#include <string>

namespace mokshape {

using Json = nlohmann::ordered_json;

/// null for none.
Json jsonNumber(const std::optional<double>& value);

/// On one line, and valid whatever bytes its strings hold.
std::string jsonText(const Json& value);

/// Quoted where it has to be.
std::string csvText(const std::string& value);

/// Empty for none.
std::string csvNumber(const std::optional<double>& value);

}  // namespace mokshape
