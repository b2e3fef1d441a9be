#include "apps/kivsys/output/json_text.h"

#include <functional>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace kiv::test {
namespace {

std::string printed(const std::function<void(OutputText& text)>& addText) {
  ::testing::internal::CaptureStdout();
  printOutcome(addText, 0);
  return ::testing::internal::GetCapturedStdout();
}

TEST(JsonText, IsTheSameWithAndWithoutLongMembers) {
  const Json whole = {
      {"a", 1}, {"list", {"x", {{"y", 2}}, Json::array()}}, {"\"b\"", nullptr}, {"none", Json::array()}};
  Json object = whole;
  object["list"] = nullptr;
  object["none"] = nullptr;
  const auto addList = [&](JsonArray& array) {
    for (const Json& element : whole["list"]) {
      array.add(element);
    }
  };
  EXPECT_EQ(printed([&](OutputText& text) {
              addObject(text, object, {{"list", addList}, {"none", [](JsonArray& /*array*/) {}}});
            }),
            whole.dump());
}

TEST(JsonText, HasLongMembersWithinLongMembers) {
  const auto addNumbers = [](JsonArray& array) {
    array.add(1);
    array.add(2);
  };
  const auto addObjects = [&](JsonArray& array) {
    array.add({{"numbers", 0}}, {{"numbers", addNumbers}});
    array.add({{"numbers", 0}, {"end", true}}, {{"numbers", addNumbers}});
  };
  EXPECT_EQ(printed([&](OutputText& text) {
              addLine(text, {{"objects", 0}}, {{"objects", addObjects}});
            }),
            "{\"objects\":[{\"numbers\":[1,2]},{\"numbers\":[1,2],\"end\":true}]}\n");
}

TEST(JsonText, IsValidWhereATextIsNot) {
  EXPECT_EQ(kiv::asText(Json("F\xF6te")), "\"F\xEF\xBF\xBDte\"");
}

TEST(JsonText, ComesWholeHoweverLongItIs) {
  constexpr int count = 100'000;
  Json whole;
  for (int number = 0; number < count; ++number) {
    whole["numbers"].push_back(number);
  }
  const auto addNumbers = [](JsonArray& array) {
    for (int number = 0; number < count; ++number) {
      array.add(number);
    }
  };
  EXPECT_EQ(printed([&](OutputText& text) {
              addObject(text, {{"numbers", 0}}, {{"numbers", addNumbers}});
            }),
            whole.dump());
}

}  // namespace
}  // namespace kiv::test
