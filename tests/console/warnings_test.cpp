#include <string>
#include <utility>
#include <vector>

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
  EXPECT_EQ(ended.error, looseItem() + "Next: kivsys convert x1.mus x2.mus --result converted/WORK0001.MUS\n");
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
      ended.error.ends_with("kivsys: nothing is written, as there are warnings or problems and --strict is given\n"
                            "Next: kivsys suggest x1.mus x2.mus\n"))
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

TEST_F(ConsoleWarnings, ASortThatMixesStavesUpSaysSo) {
  const std::string barline = "barline 1 at 0 spans 3\n";
  const std::string bottom = "staff 1 at 0 instrument 5\n";
  std::string many;
  for (int staff = 1; staff <= 33; ++staff) {
    many += "staff " + std::to_string(staff) + " at 0 instrument " + std::to_string(staff) + "\n";
  }
  const std::vector<std::pair<std::string, std::string>> pages = {
      {bottom + "staff 2 at 0 instrument 7\nstaff 3 at 0 instrument 7\n" + barline,
       "item 3: warning: the instrument id occurs again on the page; a sort mixes the items of the staves up"},
      {bottom + "staff 2 at 0\nstaff 3 at 0\n" + barline,
       "item 2: warning: 2 staves of the page have no instrument id; a sort mixes their items up"},
      {bottom + "staff 2 at 0 instrument 6\nstaff 2 at 9 instrument 7\n" + barline,
       "item 3: warning: the staff number occurs again on the page; a sort takes the staves for one"},
      {many + "barline 1 at 0 spans 33\n", "warning: a result would have 33 staves, and only 32 are written"}};
  for (const auto& [text, line] : pages) {
    place.write("A1.MUS", page(text));
    const Ended refused = place.kivsys({"sort", "--strict", "A1.MUS"});
    EXPECT_EQ(refused.status, 3) << line;
    EXPECT_EQ(refused.error, "kivsys: A1.MUS: " + line +
                                 "\nkivsys: nothing is written, as there are warnings and --strict is given\n");
    EXPECT_EQ(place.read("A1.PAG"), "(no file)");
    const Ended sorted = place.kivsys({"sort", "A1.MUS"});
    EXPECT_EQ(sorted.status, 0);
    EXPECT_EQ(sorted.error, "kivsys: A1.MUS: " + line + "\n");
    fs::remove(place.path() / "A1.PAG");
  }
}

TEST_F(ConsoleWarnings, APageOfTwoSystemsIsNotSortedAndHasTheMessageAboutThatOnly) {
  addPage("A1.MUS", "staff 1 at 0 instrument 7\nbarline 1 at 0 spans 1\nstaff 2 at 0 instrument 7\n");
  const Ended ended = place.kivsys({"sort", "A1.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error.find("warning"), std::string::npos) << ended.error;
}

TEST_F(ConsoleWarnings, AChartSaysThatTheReportCutsNamesAtACommaToo) {
  addTwo("com,ma/");
  const Ended ended = place.kivsys({"chart", "com,ma"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_NE(ended.error.find("warning: the name has a comma, and the records of the report end it there\n"),
            std::string::npos)
      << ended.error;
  addTwo();
  EXPECT_EQ(place.kivsys({"chart", "x1.mus", "x2.mus"}).error, "");
}

TEST_F(ConsoleWarnings, NoFolderIsMadeForARunThatIsRefused) {
  addLossy();
  for (const std::string command : {"analyze", "convert"}) {
    const Ended ended = place.kivsys({command, "--strict", "--folder", "new", "x1.mus", "x2.mus"});
    EXPECT_EQ(ended.status, 3);
    EXPECT_EQ(ended.error.find("made the folder"), std::string::npos) << ended.error;
    EXPECT_FALSE(fs::exists(place.path() / "new"));
    EXPECT_EQ(place.kivsys({command, "--strict", "--force", "--folder", command, "x2.mus"}).status,
              command == "convert" ? 0 : 2);
  }
  EXPECT_EQ(place.kivsys({"analyze", "--strict", "--folder", "made", "x2.mus"}).status, 0);
  EXPECT_TRUE(fs::exists(place.path() / "made/KivSystem1.TXT"));
}

TEST_F(ConsoleWarnings, MusicOnAHiddenStaffIsLeftOut) {
  addPage("x1.mus",
          fluteAndBass + "staff 3 at 0 lines -1 instrument 9\nnote 3 at 5\nnote 3 at 8\nbarline 3 at 5 spans 1\n");
  addPage("x2.mus", bass);
  const std::string line =
      "kivsys: x1.mus: item 4: warning: 2 items are on staff 3, which is hidden; a conversion "
      "leaves out what is there\n";
  EXPECT_TRUE(place.kivsys({"analyze", "x1.mus", "x2.mus"}).error.starts_with(line + "Next: "));
  const Ended refused = place.kivsys({"convert", "--strict", "x1.mus", "x2.mus"});
  EXPECT_EQ(refused.status, 3);
  EXPECT_NE(refused.error.find(line), std::string::npos) << refused.error;
  addPage("x1.mus", fluteAndBass + "staff 3 at 0 lines -1 instrument 9\nbarline 3 at 5 spans 1\n");
  EXPECT_EQ(place.kivsys({"convert", "--strict", "x1.mus", "x2.mus"}).status, 0);
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
