#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace kiv::test {

/// The schema that lies in the documents.
nlohmann::json documentedSchema();

/// What is wrong with a value by a definition of the schema ("analyze"); empty when it is in order. Knows the words
/// that the schema uses, and complains of others.
std::vector<std::string> complaints(const nlohmann::json& value, const std::string& definition);

}  // namespace kiv::test
