#include "apps/kivsys/output/json_text.h"

#include <algorithm>

#include <nlohmann/json.hpp>

namespace kiv {

std::string asText(const Json& value) {
  return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

void JsonArray::add(const Json& object, const std::vector<LongMember>& longMembers) {
  text_.add(isEmpty_ ? "" : ",");
  isEmpty_ = false;
  addObject(text_, object, longMembers);
}

void addObject(OutputText& text, const Json& object, const std::vector<LongMember>& longMembers) {
  if (longMembers.empty()) {
    text.add(asText(object));
    return;
  }
  const char* before = "{";
  for (const auto& [key, value] : object.items()) {
    text.add(before + asText(Json(key)) + ":");
    before = ",";
    const auto found = std::find_if(longMembers.begin(), longMembers.end(),
                                    [&](const LongMember& member) { return member.key == key; });
    if (found == longMembers.end()) {
      text.add(asText(value));
      continue;
    }
    text.add("[");
    JsonArray array(text);
    found->addElements(array);
    text.add("]");
  }
  text.add("}");
}

void addLine(OutputText& text, const Json& object, const std::vector<LongMember>& longMembers) {
  addObject(text, object, longMembers);
  text.add("\n");
}

}  // namespace kiv
