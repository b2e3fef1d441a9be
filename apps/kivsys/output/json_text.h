#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "apps/kivsys/output/print_outcome.h"

namespace kiv {

using Json = nlohmann::ordered_json;

class JsonArray;

/// A member of an object that is an array, and can be so long that it is printed element by element.
struct LongMember {
  std::string_view key;
  std::function<void(JsonArray& array)> addElements;
};

/// Prints an object in UTF-8. Its members of these keys, whose values here do not matter, are long ones.
void addObject(OutputText& text, const Json& object, const std::vector<LongMember>& longMembers);
/// The same on a line of its own.
void addLine(OutputText& text, const Json& object, const std::vector<LongMember>& longMembers = {});

/// An array while it is being printed.
class JsonArray {
 public:
  explicit JsonArray(OutputText& text) : text_(text) {}

  void add(const Json& element) { add(element, {}); }
  /// An object with members that may be long.
  void add(const Json& object, const std::vector<LongMember>& longMembers);

 private:
  OutputText& text_;
  bool isEmpty_ = true;
};

/// The value in UTF-8, without a line end.
std::string asText(const Json& value);

}  // namespace kiv
