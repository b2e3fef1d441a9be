#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"
#include "tests/console/json_schema.h"

namespace kiv::test {
namespace {

const std::string damaged = "staff 1 at 0 instrument 102\nwords 99\n";
const std::string next = "\nNext: kivsys recover ";

/// What users read of a run that has something to say.
class ErrorLines : public ConsoleConvert {
 protected:
  void expectError(const Names& arguments, const std::string& error, int status = 1) const {
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, status) << ::testing::PrintToString(arguments);
    EXPECT_EQ(ended.error, error) << ::testing::PrintToString(arguments);
  }
};

TEST_F(ErrorLines, NameThePageAndTheItem) {
  addPage("x1.mus", bass);
  addPage("x2.mus", damaged);
  const std::string error = "kivsys: x2.mus: item 2: Structural error in MUS file" + next + "x2.mus\n";
  const std::string option = "kivsys: note: --keep-going skips bad pages and uses the others\n";
  for (const std::string command : {"analyze", "convert", "chart", "instruments", "suggest"}) {
    expectError({command, "x1.mus", "x2.mus"}, error + option);
    expectError({command, "-q", "x1.mus", "x2.mus"}, error.substr(0, error.find('\n') + 1));
    expectError({command, "x2.mus"}, error);
  }
  expectError({"trace", "x1.mus", "x2.mus"}, error);
  EXPECT_EQ(place.kivsys({"analyze", "--like-panel", "x1.mus", "x2.mus"}).error.find("--keep-going"),
            std::string::npos);
  expectError({"analyze", "--json", "x1.mus", "x2.mus"}, error + option);
  expectError({"draw", "x2.mus"}, error);
  expectError({"sort", "x2.mus"}, error);
}

TEST_F(ErrorLines, NameThePageAsTheUserCanFindIt) {
  addPage("music/x2.mus", damaged);
  addPage("my music/x2.mus", damaged);
  const std::string text = ": item 2: Structural error in MUS file";
  expectError({"analyze", "--folder", "out", "music"},
              "kivsys: made the folder out\nkivsys: music/x2.mus" + text + next + "music/x2.mus\n");
  expectError({"analyze", "my music"}, "kivsys: my music/x2.mus" + text + next + "'my music/x2.mus'\n");
  const std::string path = (place.path() / "music/x2.mus").string();
  const Ended ended = place.kivsys({"analyze", path}, "my music");
  EXPECT_EQ(ended.error, "kivsys: " + path + text + next + path + "\n");
}

TEST_F(ErrorLines, OfAPageThatIsNoPageHaveNoItem) {
  place.write("x1.mus", std::string(1, '\x01'));
  expectError({"analyze", "x1.mus"}, "kivsys: x1.mus: Structural error in MUS file" + next + "x1.mus\n");
}

TEST_F(ErrorLines, OfAPageThatIsTooBigSayHowToLookAtIt) {
  std::string text = bass;
  for (int item = 0; item < 5000; ++item) {
    text += "note 1 at 5\n";
  }
  addPage("x1.mus", text);
  expectError({"draw", "x1.mus"}, "kivsys: x1.mus: MUS file too big for operation\nNext: kivsys dump x1.mus\n");
  EXPECT_EQ(place.kivsys({"dump", "x1.mus"}).status, 0);
}

TEST_F(ErrorLines, OfRunTimeErrorsNameTheItem) {
  addPage("x1.mus", "staff 1 at 0 instrument 102\nstaff 40000 at 0 instrument 101\n");
  expectError({"analyze", "x1.mus"}, "kivsys: x1.mus: item 2: Run-time error: Overflow\n");
}

TEST_F(ErrorLines, OfPageTextNameTheLine) {
  place.write("x1.txt", "staff 1 at 0\n\nstave 2 at 0\n");
  expectError({"build", "x1.txt", "x1.mus"}, "kivsys: x1.txt:3: unknown word \"stave\"\n");
}

TEST_F(ErrorLines, ThatEndNoRunAreNotes) {
  addPage("x1.mus", "staff 2 at 0 instrument 105\nstaff 1 at 0 instrument 105\nbarline 1 at 0 spans 2\n");
  addPage("x2.mus", bass);
  const Ended ended = place.kivsys({"analyze", "x1.mus", "x2.mus"});
  EXPECT_TRUE(ended.error.starts_with(
      "kivsys: x1.mus: note: Duplicate instrument Id; InstrId(s): 105; Results are unpredictable\n"))
      << ended.error;
}

TEST_F(ErrorLines, OfAPageInSeveralFilesNameItsTopFile) {
  addPage("x1a.mus", "staff 1 at 0\nbarline 1 at 0 spans 1\n");
  addPage("x1b.mus", "staff 1 at 0\nbarline 1 at 0 spans 1\n");
  const Ended ended = place.kivsys({"analyze", "x1a.mus", "x1b.mus"});
  EXPECT_NE(ended.error.find("kivsys: note: Zero instrId(s) in multipage files. Top file is: x1a.mus; Results"),
            std::string::npos)
      << ended.error;
}

TEST_F(ErrorLines, OfAPageWithoutASystemBarlineNameItOnce) {
  addPage("x1a.mus", "staff 1 at 0 instrument 101\n");
  addPage("x1b.mus", "staff 1 at 0 instrument 102\n");
  expectError({"analyze", "x1a.mus", "x1b.mus"}, "kivsys: x1a.mus: No system barline encountered in multifile page\n");
}

TEST_F(ErrorLines, OfSkippedPagesHaveTheReason) {
  addPage("x1.mus", bass);
  addPage("x2.mus", damaged);
  addPage("x;3.mus", bass);
  expectError({"analyze", "--keep-going", "x1.mus", "x2.mus", "x4.mus", "x;3.mus"},
              "kivsys: cannot read x4.mus: No such file or directory\n"
              "kivsys: x;3.mus: File naming problem; the form is <letter(s)><digit(s)><optionally one sequence "
              "letter>.<suffix>\n"
              "kivsys: x2.mus: item 2: Structural error in MUS file" +
                  next + "x2.mus\n");
}

TEST_F(ErrorLines, HaveNoWordsOfBoxes) {
  addTwo();
  addPage("y1.mus", bass);
  addPage("z2.mus", damaged);
  addPage("WORK0001.MUS", bass);
  place.write("names.txt", "");
  const std::vector<Names> runs = {{"convert", "x1.mus", "x2.mus", "-o", "out/R0001.MUS"},
                                   {"convert", "y1.mus"},
                                   {"convert", "--dry-run", "x1.mus", "x2.mus"},
                                   {"convert", "WORK0001.MUS", "-o", "out/R0001.MUS"},
                                   {"analyze", "z2.mus"},
                                   {"analyze", "--names", "names.txt"},
                                   {"convert", "x1.mus", "x2.mus", "--no-overwrite", "-o", "out/R0001.MUS"},
                                   {"sort", "z2.mus"},
                                   {"sort", "gone.mus"},
                                   {"sort", "x1.mus"}};
  for (const Names& arguments : runs) {
    const std::string error = place.kivsys(arguments).error;
    for (const std::string words : {"Convert button", "Hit OK", "Hit enter", "KivValid", "KivRenam", "will be deleted",
                                    "Current folder", "critical: ", "information: ", "exclamation: ", "after view"}) {
      EXPECT_EQ(error.find(words), std::string::npos) << ::testing::PrintToString(arguments) << error;
    }
  }
}

TEST_F(ErrorLines, AreThoseOfThePanelOnRequestAndInJson) {
  addPage("z2.mus", damaged);
  const std::string text = "Structural error in MUS file: " + place.capitals("z2.mus") +
                           "\r\nTry to recover with KivValid/KivRecover.\r\nCurrent folder = " + place.corePath("") +
                           "\r\nItem number = 2";
  const Ended like = place.kivsys({"analyze", "--like-panel", "z2.mus"});
  EXPECT_EQ(like.error, shown("critical", text));
  const Ended ended = place.kivsys({"analyze", "--json", "z2.mus"});
  EXPECT_EQ(Json::parse(ended.out)["messages"], Json::array({message("critical", text)}));
}

TEST_F(ErrorLines, SayWhatToDoNextWithPagesThatAreGoodAsTheyAre) {
  addPage("x1.mus", bass);
  expectError({"convert", "x1.mus"},
              qualifiesNote +
                  "kivsys: note: no results were written, as the pages can be used without a conversion\n"
                  "Next: kivsys convert --force x1.mus --result converted/WORK0001.MUS\n",
              0);
  const Ended forced = place.kivsys({"convert", "--force", "x1.mus"});
  EXPECT_EQ(forced.error.find("Next:"), std::string::npos) << forced.error;
  EXPECT_EQ(place.kivsys({"convert", "-q", "x1.mus"}).error, "");
}

TEST_F(ErrorLines, OfAConversionSayWhatWasWritten) {
  addTwo();
  expectError({"convert", "x1.mus", "x2.mus", "-o", "out/R0001.MUS"},
              needsConversionNote + "kivsys: made the folder out/\n" + createdNote(2, "out/R0001.MUS", "out/R0002.MUS"),
              0);
  expectError(
      {"convert", "--dry-run", "x1.mus", "x2.mus"},
      needsConversionNote +
          "kivsys: note: a dry run; without --dry-run, report and verdict would be written to the current folder\n",
      0);
}

TEST_F(ErrorLines, AskBeforeAFileIsReplaced) {
  addTwo();
  place.write("WORK0001.MUS", "old");
  expectError({"convert", "--no-overwrite", "x1.mus", "x2.mus"},
              needsConversionNote +
                  "kivsys: File exists: WORK0001.MUS; Overwrite?\nkivsys: Abnormal termination forced by user\n");
}

TEST_F(ErrorLines, OfASortNameThePageThatCannotBeSorted) {
  addPage("x1.mus", fluteAndBass);
  addPage("x2.mus", "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\n");
  addPage("x3.mus", fluteAndBass);
  const Ended ended = place.kivsys({"sort", "x1.mus", "x2.mus", "x3.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "X1.PAG\nX1.PAG: already in order\n");
  EXPECT_EQ(ended.error,
            "kivsys: x2.mus: System barline problem; only a page of one system can be sorted\nNext: kivsys draw x2.mus "
            "--out x2.svg\nkivsys: only 1 of 3 pages were sorted\n");
}

TEST_F(ErrorLines, OfASortAreProblemsInJson) {
  addPage("x2.mus", "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\n");
  const Json object = Json::parse(place.kivsys({"sort", "--json", "x2.mus"}).out);
  EXPECT_EQ(schemaErrors(object, "sort"), Names());
  EXPECT_EQ(object["messages"][0]["text"], "System barline problem.");
  ASSERT_EQ(object["problems"].size(), 1U);
  EXPECT_EQ(object["problems"][0]["code"], "system-barline");
  EXPECT_EQ(object["problems"][0]["file"], place.capitals("x2.mus"));
}

TEST_F(ErrorLines, OfASortThatIsDoneAreNone) {
  addPage("x1.mus", fluteAndBass);
  expectError({"sort", "x1.mus"}, "", 0);
}

}  // namespace
}  // namespace kiv::test
