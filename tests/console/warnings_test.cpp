#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"
#include "tests/console/json_schema.h"

namespace kiv::test {
namespace {

/// Two pages, of which the first loses items to a conversion.
class ConsoleWarnings : public ConsoleConvert {
 protected:
  void addLossy() const {
    addPage("x1.mus", fluteAndBass + "note 7 at 5\nshorttext 1 at 5 \"sforzato\"\n");
    addPage("x2.mus", bass);
  }
  static std::string looseItem() {
    return "kivsys: x1.mus: item 4: warning: 1 item is on staff 7, which has no staff item; a conversion leaves out "
           "what is there\n";
  }
  static std::string cutText() { return "kivsys: x1.mus: item 5: warning: the text is cut to 5 characters\n"; }
};

TEST_F(ConsoleWarnings, AnAnalysisShowsWhatAConversionWouldLose) {
  addLossy();
  const Ended ended = place.kivsys({"analyze", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error, looseItem());
}

TEST_F(ConsoleWarnings, AConversionShowsThemBeforeItWrites) {
  addLossy();
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error,
            needsConversionNote + looseItem() + cutText() + createdNote(2, "WORK0001.MUS", "WORK0002.MUS"));
}

TEST_F(ConsoleWarnings, StrictAnalysisEndsWithStatus3) {
  addLossy();
  EXPECT_EQ(place.kivsys({"analyze", "--strict", "x1.mus", "x2.mus"}).status, 3);
  EXPECT_EQ(place.kivsys({"analyze", "--strict", "x2.mus"}).status, 0);
}

TEST_F(ConsoleWarnings, AProblemCountsAsMuchAsAWarning) {
  addPage("x1.mus", "staff 2 at 0 instrument 0\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n");
  addPage("x2.mus", bass);
  EXPECT_EQ(place.kivsys({"analyze", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_EQ(place.kivsys({"analyze", "--strict", "x1.mus", "x2.mus"}).status, 3);
  EXPECT_EQ(place.kivsys({"analyze", "--strict", "--allow-zero-id", "x1.mus", "x2.mus"}).status, 0);
  const Ended ended = place.kivsys({"convert", "--strict", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 3);
  EXPECT_TRUE(
      ended.error.ends_with("kivsys: nothing is written, as there are warnings or problems and --strict is given\n"))
      << ended.error;
  EXPECT_EQ(place.read("WORK0001.MUS"), "(no file)");
}

TEST_F(ConsoleWarnings, StrictIsNotForARunLikeThePanels) {
  addLossy();
  EXPECT_EQ(place.kivsys({"convert", "--strict", "--like-panel", "x1.mus", "x2.mus"}).status, 2);
}

TEST_F(ConsoleWarnings, ASortSaysWhatItChanges) {
  place.write("A1.MUS", page("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\nshorttext 1 at 5 \"abcdefgh\"\n"
                             "text 1 at 9 \"short\" length 15\n"));
  const std::string file = "kivsys: A1.MUS";
  const std::string lines = file + ": item 3: warning: the text is cut to 5 characters\n" + file +
                            ": item 4: warning: the text is filled up with blanks to 24 characters\n";
  const Ended refused = place.kivsys({"sort", "--strict", "A1.MUS"});
  EXPECT_EQ(refused.status, 3);
  EXPECT_EQ(refused.error, lines + "kivsys: nothing is written, as there are warnings and --strict is given\n");
  EXPECT_EQ(place.read("A1.PAG"), "(no file)");
  const Ended sorted = place.kivsys({"sort", "--json", "A1.MUS"});
  EXPECT_EQ(sorted.status, 0);
  EXPECT_EQ(sorted.error, lines);
  EXPECT_EQ(Json::parse(sorted.out)["problems"][2]["code"], "text-filled");
}

TEST_F(ConsoleWarnings, StrictConversionWritesNothing) {
  addLossy();
  place.write("KivSystem1.TXT", "old");
  const Ended ended = place.kivsys({"convert", "--strict", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 3);
  EXPECT_EQ(ended.error, needsConversionNote + looseItem() + cutText() +
                             "kivsys: nothing is written, as there are warnings or problems and --strict is given\n");
  EXPECT_EQ(filesIn(place.path()), (Names{"KivSystem1.TXT", "x1.mus", "x2.mus"}));
  EXPECT_EQ(place.read("KivSystem1.TXT"), "old");
  EXPECT_EQ(place.kivsys({"convert", "--strict", "--force", "x2.mus"}).status, 0);
  EXPECT_NE(place.read("WORK0001.MUS"), "(no file)");
}

TEST_F(ConsoleWarnings, JsonHasThemAmongTheProblems) {
  addLossy();
  const Json object = Json::parse(place.kivsys({"analyze", "--json", "x1.mus", "x2.mus"}).out);
  EXPECT_EQ(schemaErrors(object, "analyze"), Names());
  ASSERT_EQ(object["problems"].size(), 1U);
  const Json expected = {
      {"code", "item-on-no-staff"},
      {"severity", "warning"},
      {"message", nullptr},
      {"file", place.capitals("X1.MUS")},
      {"path", (place.path() / "x1.mus").string()},
      {"system", nullptr},
      {"staff", 7},
      {"instrument", nullptr},
      {"item", 4},
      {"offset", 102},
      {"repeats", 1},
      {"text", "1 item is on staff 7, which has no staff item; a conversion leaves out what is there"}};
  EXPECT_EQ(object["problems"][0], expected);
}

TEST_F(ConsoleWarnings, JsonLinesHaveThemToo) {
  addLossy();
  const std::string out = place.kivsys({"analyze", "--jsonl", "x1.mus", "x2.mus"}).out;
  const Json line = Json::parse(out.substr(0, out.find('\n')));
  EXPECT_EQ(schemaErrors(line, "line"), Names());
  EXPECT_EQ(line["record"], "problem");
  EXPECT_EQ(line["severity"], "warning");
}

TEST_F(ConsoleWarnings, ASiblingsCallHasNone) {
  addLossy();
  place.write("n.txt", place.corePath("x1.mus") + " 1\r\n" + place.corePath("x2.mus") + " 1\r\n");
  EXPECT_EQ(place.kivsys({"CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=n.txt"}).error, "");
}

}  // namespace
}  // namespace kiv::test
