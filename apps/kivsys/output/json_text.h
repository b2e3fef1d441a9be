#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "apps/kivsys/output/json_value.h"
#include "apps/kivsys/output/print_outcome.h"

namespace kiv {

class JsonArray;

/// Adds the elements of an array while it is being printed.
using AddElements = std::function<void(JsonArray& array)>;

/// An object that can have members which are so long that they are printed element by element.
class LongObject {
 public:
  LongObject() : plain_(Json::object()) {}
  /// It has these members; arrays can be set, too.
  LongObject(Json plain) : plain_(std::move(plain)) {}  // NOLINT(google-explicit-constructor): any object is one

  /// The members that are not long, and may be changed. The long ones keep their places in it.
  Json& plain() { return plain_; }
  const Json& plain() const { return plain_; }
  /// The member becomes an array of what is added when it is printed.
  void setArray(const char* key, AddElements addElements);
  /// Adds the members of another object after its own.
  void append(const LongObject& other);
  /// How the elements of this member are added; null for one that is not long.
  const AddElements* elementsOf(std::string_view key) const;

 private:
  struct LongMember {
    std::string_view key;
    AddElements addElements;
  };

  Json plain_;
  std::vector<LongMember> longMembers_;
};

/// Prints an object in UTF-8.
void addObject(OutputText& text, const LongObject& object);
/// The same on a line of its own.
void addLine(OutputText& text, const LongObject& object);

/// An array while it is being printed.
class JsonArray {
 public:
  explicit JsonArray(OutputText& text) : text_(text) {}

  /// Adds an element. Several are printed at a time, which is much faster than one by one, so finish() must follow.
  void add(Json element);
  void add(const LongObject& object);
  /// Prints the elements that have been added and not printed.
  void finish();

 private:
  void addComma();

  OutputText& text_;
  Json pending_ = Json::array();
  bool isEmpty_ = true;
};

}  // namespace kiv
