#include "apps/kivsys/output/json_text.h"

#include <algorithm>
#include <utility>

namespace kiv {

void LongObject::setArray(const char* key, AddElements addElements) {
  plain_[key] = Json::array();
  longMembers_.push_back({key, std::move(addElements)});
}

void LongObject::append(const LongObject& other) {
  plain_.update(other.plain_);
  longMembers_.insert(longMembers_.end(), other.longMembers_.begin(), other.longMembers_.end());
}

const AddElements* LongObject::elementsOf(std::string_view key) const {
  const auto found = std::find_if(longMembers_.begin(), longMembers_.end(),
                                  [key](const LongMember& member) { return member.key == key; });
  return found == longMembers_.end() ? nullptr : &found->addElements;
}

void JsonArray::addComma() {
  text_.add(isEmpty_ ? "" : ",");
  isEmpty_ = false;
}

void JsonArray::add(Json element) {
  constexpr std::size_t several = 32;
  pending_.push_back(std::move(element));
  if (pending_.size() == several) {
    finish();
  }
}

void JsonArray::add(const LongObject& object) {
  finish();
  addComma();
  addObject(text_, object);
}

void JsonArray::finish() {
  if (pending_.empty()) {
    return;
  }
  addComma();
  const std::string text = asText(pending_);
  text_.add(std::string_view(text).substr(1, text.size() - 2));  // without its brackets
  pending_.clear();
}

void addObject(OutputText& text, const LongObject& object) {
  text.add("{");
  const char* before = "";
  for (const auto& [key, value] : object.plain().items()) {
    text.add(before + asText(Json(key)) + ":");
    before = ",";
    const AddElements* addElements = object.elementsOf(key);
    if (addElements == nullptr) {
      text.add(asText(value));
      continue;
    }
    text.add("[");
    JsonArray array(text);
    (*addElements)(array);
    array.finish();
    text.add("]");
  }
  text.add("}");
}

void addLine(OutputText& text, const LongObject& object) {
  addObject(text, object);
  text.add("\n");
}

}  // namespace kiv
