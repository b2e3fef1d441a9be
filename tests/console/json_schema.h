#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace kiv::test {

/// The schema in the documents.
nlohmann::json documentedSchema();

/// What is wrong with a value by a definition of the schema ("analyze"); empty when it is valid. Knows the words
/// that the schema uses, and reports others.
std::vector<std::string> schemaErrors(const nlohmann::json& value, const std::string& definition);

}  // namespace kiv::test
