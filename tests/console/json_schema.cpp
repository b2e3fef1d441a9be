#include "tests/console/json_schema.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>
#include <stdexcept>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using Json = nlohmann::json;

bool isOfType(const Json& value, const std::string& type) {
  return (type == "object" && value.is_object()) || (type == "array" && value.is_array()) ||
         (type == "string" && value.is_string()) || (type == "boolean" && value.is_boolean()) ||
         (type == "null" && value.is_null()) || (type == "integer" && value.is_number_integer()) ||
         (type == "number" && value.is_number());
}

/// Whether a value is of the type that a rule wants, and one of the values that it names.
bool hasValueOf(const Json& rule, const Json& value) {
  const auto isListed = [&](const Json& values) {
    return std::find(values.begin(), values.end(), value) != values.end();
  };
  const auto isOfOne = [&](const Json& types) {
    return types.is_array() ? std::any_of(types.begin(), types.end(), [&](const Json& t) { return isOfType(value, t); })
                            : isOfType(value, types);
  };
  return (!rule.contains("const") || value == rule["const"]) && (!rule.contains("enum") || isListed(rule["enum"])) &&
         (!rule.contains("type") || isOfOne(rule["type"]));
}

class Checker {
 public:
  explicit Checker(const Json& schema) : schema_(schema) {}

  std::vector<std::string> check(const Json& value, const Json& rule, const std::string& place) const;

 private:
  std::vector<std::string> checkObject(const Json& value, const Json& rule, const std::string& place) const;
  std::vector<std::string> checkNames(const Json& value, const Json& rule, const std::string& place) const;
  std::vector<std::string> checkOneOf(const Json& value, const Json& rules, const std::string& place) const;

  const Json& definition(const Json& rule) const {
    return schema_.at(Json::json_pointer(rule["$ref"].get<std::string>().substr(1)));
  }

  const Json& schema_;
};

std::vector<std::string> Checker::check(const Json& value, const Json& rule, const std::string& place) const {
  static const std::set<std::string> known = {"$ref",
                                              "const",
                                              "enum",
                                              "oneOf",
                                              "type",
                                              "properties",
                                              "required",
                                              "additionalProperties",
                                              "unevaluatedProperties",
                                              "items"};
  std::vector<std::string> found;
  const auto add = [&](const std::vector<std::string>& more) { found.insert(found.end(), more.begin(), more.end()); };
  for (const auto& [word, meaning] : rule.items()) {
    if (!known.contains(word)) {
      found.push_back(place + ": the schema says " + word);
    }
  }
  if (!hasValueOf(rule, value)) {
    found.push_back(place + " is " + value.dump());
  }
  if (rule.contains("$ref")) {
    add(check(value, definition(rule), place));
  }
  if (rule.contains("oneOf")) {
    add(checkOneOf(value, rule["oneOf"], place));
  }
  if (value.is_object()) {
    add(checkObject(value, rule, place));
    add(checkNames(value, rule, place));
  }
  if (rule.contains("items") && value.is_array()) {
    for (std::size_t i = 0; i < value.size(); ++i) {
      add(check(value[i], rule["items"], place + "/" + std::to_string(i)));
    }
  }
  return found;
}

std::vector<std::string> Checker::checkObject(const Json& value, const Json& rule, const std::string& place) const {
  std::vector<std::string> found;
  for (const auto& key : rule.value("required", Json::array())) {
    if (!value.contains(key.get<std::string>())) {
      found.push_back(place + " has no " + key.get<std::string>());
    }
  }
  const Json members = rule.value("properties", Json::object());
  for (const auto& [key, meaning] : members.items()) {
    if (value.contains(key)) {
      const auto more = check(value[key], meaning, place + "/" + key);
      found.insert(found.end(), more.begin(), more.end());
    }
  }
  return found;
}

// Members that the rule does not name; those that a reference names count only as evaluated.
std::vector<std::string> Checker::checkNames(const Json& value, const Json& rule, const std::string& place) const {
  const bool alsoReferred = rule.contains("unevaluatedProperties");
  if (!alsoReferred && !rule.contains("additionalProperties")) {
    return {};
  }
  Json named = rule.value("properties", Json::object());
  if (alsoReferred && rule.contains("$ref")) {
    named.update(definition(rule).value("properties", Json::object()));
  }
  std::vector<std::string> found;
  for (const auto& [key, member] : value.items()) {
    if (!named.contains(key)) {
      found.push_back(place + " has " + key);
    }
  }
  return found;
}

std::vector<std::string> Checker::checkOneOf(const Json& value, const Json& rules, const std::string& place) const {
  const auto fitting =
      std::count_if(rules.begin(), rules.end(), [&](const Json& rule) { return check(value, rule, place).empty(); });
  return fitting == 1
             ? std::vector<std::string>()
             : std::vector{place + " is " + value.dump() + ", which fits " + std::to_string(fitting) + " rules"};
}

constexpr const char* commandsFile = "json-schema.json";
constexpr const char* partsFile = "json-schema-parts.json";

/// A file of the schema. What it refers to in the file of the parts is looked up as one of its own definitions.
Json documented(const std::string& name) {
  std::ifstream file(std::filesystem::path(DOCS_FOLDER) / name);
  std::string text{std::istreambuf_iterator<char>(file), {}};
  const std::string reference = std::string("\"") + partsFile + "#";
  for (std::size_t at = text.find(reference); at != std::string::npos; at = text.find(reference, at)) {
    text.replace(at, reference.size(), "\"#");
  }
  return Json::parse(text);
}

}  // namespace

Json documentedSchema() {
  Json schema = documented(commandsFile);
  const Json parts = documented(partsFile);
  for (const auto& [name, definition] : parts["$defs"].items()) {
    if (schema["$defs"].contains(name)) {
      throw std::logic_error(name + " is defined twice");
    }
    schema["$defs"][name] = definition;
  }
  return schema;
}

std::vector<std::string> schemaErrors(const Json& value, const std::string& definition) {
  const Json schema = documentedSchema();
  return Checker(schema).check(value, schema["$defs"][definition], definition);
}

void expectValidObjects(const std::vector<std::string>& arguments, const std::string& output) {
  const auto isGiven = [&](const std::string& option) {
    return std::find(arguments.begin(), arguments.end(), option) != arguments.end();
  };
  if (output.empty() || isGiven("--help") || !(isGiven("--json") || isGiven("--jsonl"))) {
    return;
  }
  std::vector<std::string> objects = {output};
  if (isGiven("--jsonl")) {
    objects.clear();
    std::istringstream lines(output);
    for (std::string line; std::getline(lines, line);) {
      objects.push_back(line);
    }
  }
  static const Json definitions = documentedSchema()["$defs"];
  const std::string definition = isGiven("--jsonl") ? "line" : arguments.front();
  ASSERT_TRUE(definitions.contains(definition)) << "no schema for the output of " << definition;
  for (const std::string& object : objects) {
    ASSERT_TRUE(Json::accept(object)) << object;
    EXPECT_EQ(schemaErrors(Json::parse(object), definition), std::vector<std::string>()) << object;
  }
}

}  // namespace kiv::test
