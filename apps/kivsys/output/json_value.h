#pragma once

#include <string>

#include <nlohmann/json.hpp>

namespace kiv {

/// Members of an object are in the order in which they are set.
using Json = nlohmann::ordered_json;

/// The value in UTF-8, without a line end.
std::string asText(const Json& value);

}  // namespace kiv
