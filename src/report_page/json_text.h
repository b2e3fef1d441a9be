#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace kiv::report {

/// The text as a JSON string that may stand in a script element of a page: valid UTF-8, with all characters escaped
/// that end a string, a line or an element. Bytes that are no UTF-8 become U+FFFD.
std::string jsonString(std::string_view text);

/// Builds one JSON array.
class JsonArray {
 public:
  /// Adds a value that is JSON already.
  JsonArray& add(std::string_view json);
  JsonArray& add(std::int64_t number) { return add(std::to_string(number)); }
  JsonArray& addText(std::string_view text) { return add(jsonString(text)); }
  std::string text() const { return "[" + values_ + "]"; }

 private:
  std::string values_;
};

/// Builds one JSON object. Names are plain ASCII.
class JsonObject {
 public:
  JsonObject& add(std::string_view name, std::string_view json);
  JsonObject& add(std::string_view name, std::int64_t number) { return add(name, std::to_string(number)); }
  JsonObject& addText(std::string_view name, std::string_view text) { return add(name, jsonString(text)); }
  std::string text() const { return "{" + members_ + "}"; }

 private:
  std::string members_;
};

/// The numbers as an array of pairs: a number, and how often it follows itself.
std::string runLengths(const std::vector<std::int64_t>& numbers);

}  // namespace kiv::report
