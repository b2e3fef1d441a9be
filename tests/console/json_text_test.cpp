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
  LongObject object = whole;
  object.setArray("list", [&](JsonArray& array) {
    for (const Json& element : whole["list"]) {
      array.add(element);
    }
  });
  object.setArray("none", [](JsonArray& /*array*/) {});
  EXPECT_EQ(printed([&](OutputText& text) { addObject(text, object); }), whole.dump());
}

TEST(JsonText, AnObjectMayHaveLongMembersOnlyOrNone) {
  LongObject object;
  EXPECT_EQ(printed([&](OutputText& text) { addObject(text, object); }), "{}");
  object.setArray("list", [](JsonArray& array) { array.add(Json("x")); });
  EXPECT_EQ(printed([&](OutputText& text) { addObject(text, object); }), "{\"list\":[\"x\"]}");
}

TEST(JsonText, MembersOfAnotherObjectFollow) {
  LongObject object(Json{{"first", 1}});
  LongObject other(Json{{"second", 2}});
  other.setArray("list", [](JsonArray& array) { array.add(Json(3)); });
  object.append(other);
  EXPECT_EQ(printed([&](OutputText& text) { addObject(text, object); }), "{\"first\":1,\"second\":2,\"list\":[3]}");
}

TEST(JsonText, HasLongMembersWithinLongMembers) {
  LongObject numbers;
  numbers.setArray("numbers", [](JsonArray& array) {
    array.add(Json(1));
    array.add(Json(2));
  });
  LongObject withEnd = numbers;
  withEnd.plain()["end"] = true;
  LongObject objects;
  objects.setArray("objects", [&](JsonArray& array) {
    array.add(numbers);
    array.add(withEnd);
  });
  EXPECT_EQ(printed([&](OutputText& text) { addLine(text, objects); }),
            "{\"objects\":[{\"numbers\":[1,2]},{\"numbers\":[1,2],\"end\":true}]}\n");
}

TEST(JsonText, ElementsAndObjectsAreInTheOrderInWhichTheyAreAdded) {
  constexpr int count = 200;
  Json whole = Json::array();
  LongObject object;
  object.setArray("all", [&](JsonArray& array) {
    for (int number = 0; number < count; ++number) {
      whole.push_back(number);
      array.add(Json(number));
      if (number % 70 == 0) {
        whole.push_back({{"object", number}});
        array.add(LongObject(Json{{"object", number}}));
      }
    }
  });
  const std::string text = printed([&](OutputText& output) { addObject(output, object); });
  EXPECT_EQ(text, Json({{"all", whole}}).dump());
}

TEST(JsonText, AnObjectOfMembersHasThemInTheirOrder) {
  EXPECT_EQ(kiv::asText(objectOf({{"b", 1}, {"a", Json::array({"x", nullptr})}, {"\n", objectOf({{"c", true}})}})),
            R"({"b":1,"a":["x",null],"\n":{"c":true}})");
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
  LongObject object;
  object.setArray("numbers", [](JsonArray& array) {
    for (int number = 0; number < count; ++number) {
      array.add(Json(number));
    }
  });
  EXPECT_EQ(printed([&](OutputText& text) { addObject(text, object); }), whole.dump());
}

}  // namespace
}  // namespace kiv::test
