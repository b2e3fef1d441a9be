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

/// Checks that every object that a run of kivsys has printed is valid by the definition of its command: one object for
/// --json, one a line for --jsonl. Runs without these options, or without output, print none.
void expectValidObjects(const std::vector<std::string>& arguments, const std::string& output);

}  // namespace kiv::test
