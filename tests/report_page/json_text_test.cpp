#include "report_page/json_text.h"

#include <gtest/gtest.h>

namespace kiv::report::test {
namespace {

TEST(JsonText, HasNoCharacterThatEndsAScript) {
  EXPECT_EQ(jsonString("</script><!--"), R"("\u003c/script\u003e\u003c!--")");
  EXPECT_EQ(jsonString("a&b"), R"("a\u0026b")");
}

TEST(JsonText, EscapesLineEndsOfAllKinds) {
  EXPECT_EQ(jsonString("a\r\nb"), R"("a\u000d\u000ab")");
  EXPECT_EQ(jsonString("a\xE2\x80\xA8"
                       "b\xE2\x80\xA9"),
            R"("a\u2028b\u2029")");
}

TEST(JsonText, EscapesQuotesAndBackslashes) {
  EXPECT_EQ(jsonString(R"(a"b\c)"), R"("a\u0022b\u005cc")");
}

TEST(JsonText, KeepsOtherTextAndReplacesWhatIsNone) {
  EXPECT_EQ(jsonString("Fl\xC3\xB6te"), "\"Fl\xC3\xB6te\"");
  EXPECT_EQ(jsonString("a\xFF"
                       "b"),
            "\"a\xEF\xBF\xBD"
            "b\"");
}

TEST(JsonText, BuildsArraysAndObjects) {
  EXPECT_EQ(JsonArray().text(), "[]");
  EXPECT_EQ(JsonArray().add(1).addText("x").add("[]").text(), R"([1,"x",[]])");
  EXPECT_EQ(JsonObject().add("a", 1).addText("b", "x").text(), R"({"a":1,"b":"x"})");
}

TEST(JsonText, LongValuesAreAppendedInTheirPlaces) {
  std::string json = "<";
  JsonObject object(json);
  object.add("a", 1);
  JsonArray array(object.member("b"));
  JsonArray(array.next()).end();
  JsonArray(array.add(2).next()).add(3).end();
  array.end();
  object.addText("c", "x").end();
  EXPECT_EQ(json, R"(<{"a":1,"b":[[],2,[3]],"c":"x"})");
}

TEST(JsonText, CountsRuns) {
  EXPECT_EQ(runLengths({}), "[]");
  EXPECT_EQ(runLengths({1, 1, 1, 0, 1}), "[1,3,0,1,1,1]");
}

}  // namespace
}  // namespace kiv::report::test
