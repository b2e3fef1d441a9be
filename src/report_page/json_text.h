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
  JsonArray() : JsonArray(own_) {}
  /// One that is appended to the text, which has it as a whole after end().
  explicit JsonArray(std::string& json) : json_(json) { json_ += '['; }
  JsonArray(const JsonArray&) = delete;
  JsonArray& operator=(const JsonArray&) = delete;
  ~JsonArray() = default;

  /// Adds a value that is JSON already.
  JsonArray& add(std::string_view json);
  JsonArray& add(std::int64_t number) { return add(std::to_string(number)); }
  JsonArray& addText(std::string_view text) { return add(jsonString(text)); }
  /// Where the JSON of the next value is to be appended before anything else is added.
  std::string& next();
  void end() { json_ += ']'; }
  /// The array as a text, once. Not of one that is appended to another text.
  std::string text();

 private:
  std::string own_;
  std::string& json_;
  bool isEmpty_ = true;
};

/// Builds one JSON object. Names are plain ASCII.
class JsonObject {
 public:
  JsonObject() : JsonObject(own_) {}
  /// One that is appended to the text, which has it as a whole after end().
  explicit JsonObject(std::string& json) : json_(json) { json_ += '{'; }
  JsonObject(const JsonObject&) = delete;
  JsonObject& operator=(const JsonObject&) = delete;
  ~JsonObject() = default;

  JsonObject& add(std::string_view name, std::string_view json);
  JsonObject& add(std::string_view name, std::int64_t number) { return add(name, std::to_string(number)); }
  JsonObject& addText(std::string_view name, std::string_view text) { return add(name, jsonString(text)); }
  /// Where the JSON of a member is to be appended before anything else is added.
  std::string& member(std::string_view name);
  void end() { json_ += '}'; }
  /// The object as a text, once. Not of one that is appended to another text.
  std::string text();

 private:
  std::string own_;
  std::string& json_;
  bool isEmpty_ = true;
};

/// The numbers as an array of pairs: a number, and how often it follows itself.
std::string runLengths(const std::vector<std::int64_t>& numbers);

}  // namespace kiv::report
