#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"
#include "tests/console/json_schema.h"

namespace kiv::test {
namespace {

using Json = nlohmann::json;

const std::string damaged = "staff 1 at 0 instrument 102\nwords 99\n";

/// What a new user stumbles over.
class Manners : public ConsoleConvert {
 protected:
  bool holds(const std::string& text, const std::string& part) const { return text.find(part) != std::string::npos; }
  void expectError(const Names& arguments, const std::string& part) const {
    const Ended ended = place.kivsys(arguments);
    EXPECT_TRUE(holds(ended.error, part)) << ::testing::PrintToString(arguments) << "\n" << ended.error;
  }
  void lock(const std::string& folder) const {
    fs::permissions(place.path() / folder, fs::perms::owner_read | fs::perms::owner_exec);
  }
  void unlock(const std::string& folder) const { fs::permissions(place.path() / folder, fs::perms::owner_all); }
};

TEST_F(Manners, SuggestAndVerifySkipBadPagesOnRequest) {
  addTwo();
  ASSERT_EQ(place.kivsys({"convert", "--keep-going", "x1.mus", "x2.mus"}).status, 0);
  addPage("x3.mus", damaged);
  const Ended suggested = place.kivsys({"suggest", "--keep-going", "x1.mus", "x2.mus", "x3.mus"});
  EXPECT_EQ(suggested.status, 1);
  EXPECT_TRUE(suggested.out.ends_with("2 pages analyzed, 1 skipped: X3.MUS\n")) << suggested.out;
  const Ended verified = place.kivsys({"verify", "--keep-going", "x1.mus", "x2.mus", "x3.mus"});
  EXPECT_EQ(verified.status, 1);
  EXPECT_TRUE(verified.out.starts_with("PROVED=YES\n")) << verified.out;
  EXPECT_TRUE(holds(verified.out, "2 pages analyzed, 1 skipped: X3.MUS\n")) << verified.out;
  for (const std::string command : {"suggest", "verify"}) {
    const Json all = Json::parse(place.kivsys({command, "--json", "--keep-going", "x1.mus", "x2.mus", "x3.mus"}).out);
    EXPECT_EQ(schemaErrors(all, command), Names());
    EXPECT_EQ(all["skipped"].size(), 1U) << all;
  }
}

TEST_F(Manners, FindingsOfVerifyHavePaths) {
  addTwo();
  ASSERT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus"}).status, 0);
  place.write("WORK0002.MUS", place.read("WORK0001.MUS"));
  const Json all = Json::parse(place.kivsys({"verify", "--json", "x1.mus", "x2.mus"}).out);
  EXPECT_EQ(schemaErrors(all, "verify"), Names());
  EXPECT_EQ(all["findings"][0].value("path", ""), (place.path() / "WORK0002.MUS").string()) << all;
}

TEST_F(Manners, ItemsOfARecoveryAreWholeNumbersInJson) {
  addPage("x1.mus",
          "staff 1 at 0 instrument 102\nnote 1 at 5 height 2\nnote 1 at 9 height 2\nbytes 00 00 FF FF FF FF 00 "
          "00\nnote 1 at 13 height 2\nnote 1 at 17 height 2\n");
  const std::string json = place.kivsys({"recover", "--json", "x1.mus"}).out;
  EXPECT_TRUE(holds(json, "\"staff\":1}")) << json;
  EXPECT_FALSE(holds(json, ".0")) << json;
}

TEST_F(Manners, AReportThatCannotBeWrittenHasItsFolderAndTheReason) {
  addPage("out/x1.mus", bass);
  lock("out");
  const Ended ended = place.kivsysAsOwner({"analyze", "--folder", "out", "out/x1.mus"});
  unlock("out");
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error, "kivsys: Failed to create report file: KivSystem2.TXT in " + (place.path() / "out").string() +
                             ": Permission denied; --folder DIR writes report and verdict into another folder\n");
}

TEST_F(Manners, ASortedPageThatCannotBeWrittenHasItsFolderAndTheReason) {
  addPage("out/x1.mus", bass);
  lock("out");
  const Ended ended = place.kivsysAsOwner({"sort", "--no-undo", "out/x1.mus"});
  unlock("out");
  EXPECT_TRUE(holds(ended.error,
                    "Open of output MUS file failed in " + (place.path() / "out").string() + ": Permission denied\n"))
      << ended.error;
}

TEST_F(Manners, ThePageTextThatIsTakenForAPageIsCalledSo) {
  place.write("x1.txt", bass);
  const std::string error =
      "kivsys: x1.txt: this is the text of a page, not a page\nNext: kivsys build x1.txt x1.MUS\n";
  EXPECT_EQ(place.kivsys({"draw", "x1.txt"}).error, error);
  EXPECT_EQ(place.kivsys({"analyze", "x1.txt"}).error, error);
  place.write("x2.txt", place.kivsys({"dump", "x1.txt"}).out);
  expectError({"draw", "x2.txt"}, "Next: kivsys build x2.txt x2.MUS\n");
  place.write("x3.mus", "no page at all\x01\x02");
  expectError({"draw", "x3.mus"}, "Next: kivsys recover x3.mus\n");
}

TEST_F(Manners, ARecoverySaysHowMuchIsMissingAndWhichStavesAreEmpty) {
  place.write("x1.mus", page("staff 1 at 0 instrument 102\nnote 1 at 5 height 2\nstaff 2 at 0 instrument 103\n"
                             "note 2 at 5 height 2\nnote 2 at 9 height 2\n")
                            .substr(0, 2 + 40 + 20 + 40 + 6));
  const Ended ended = place.kivsys({"recover", "x1.mus"});
  EXPECT_TRUE(holds(ended.out, " of the page\n")) << ended.out;
  EXPECT_TRUE(holds(ended.out, "\nnothing is left on these staves: 2\n")) << ended.out;
  EXPECT_EQ(ended.error, "Next: mv x1.mus x1.mus.damaged && mv RECOVERED-x1.mus x1.mus\n");
}

TEST_F(Manners, AFolderLeavesOutARecoveredPageBesideTheDamagedOne) {
  addPage("music/x1.mus", bass);
  addPage("music/RECOVERED-x1.mus", bass);
  const Ended ended = place.kivsys({"analyze", "music"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error, "kivsys: note: music/RECOVERED-x1.mus is left out, as the damaged page is there, too\n");
  const Ended survey = place.kivsys({"survey", "music", "--csv"});
  EXPECT_EQ(survey.error, ended.error);
  EXPECT_FALSE(holds(survey.out, "RECOVERED")) << survey.out;
  fs::remove(place.path() / "music/x1.mus");
  EXPECT_EQ(place.kivsys({"analyze", "music"}).error, "");
}

TEST_F(Manners, ADryRunSaysWhatElseWouldBeWritten) {
  addTwo();
  const Ended ended = place.kivsys({"convert", "--dry-run", "--result", "out/WORK0001.MUS", "x1.mus", "x2.mus"});
  EXPECT_FALSE(holds(ended.error, "Next: ")) << ended.error;
  EXPECT_TRUE(holds(ended.error,
                    "kivsys: note: a dry run; without --dry-run, report and verdict would be written to the "
                    "current folder, and the folder out would be made\n"))
      << ended.error;
}

TEST_F(Manners, ASortSaysWhatMoved) {
  addPage("x1.mus", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\nstaff 2 at 0 instrument 101\n");
  EXPECT_TRUE(place.kivsys({"sort", "x1.mus"}).out.ends_with("X1.PAG: already in order\n"));
}

TEST_F(Manners, SeveralFoldersAreRefusedInOneLine) {
  addPage("a/x1.mus", bass);
  addPage("b/x1.mus", bass);
  addPage("b/x2.mus", bass);
  const Ended ended = place.kivsys({"analyze", "a", "b"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.error,
            "kivsys: the pages of one run are in one folder, and these are 2: a, b; 'kivsys survey' "
            "analyzes the pieces of several folders\n");
  fs::create_directories(place.path() / "library/piece");
  expectError({"analyze", "library"},
              "no pages in the folder library; 'kivsys survey' analyzes the pieces in its subfolders\n");
}

TEST_F(Manners, TheHelpNamesTheChoicesAndWhatIsUndone) {
  EXPECT_TRUE(holds(place.kivsys({"fix", "--help"}).out, "--only sure|likely"));
  EXPECT_TRUE(holds(place.kivsys({"suggest", "--help"}).out, "--output"));
  EXPECT_TRUE(holds(place.kivsys({"undo", "--help"}).out, "Undo one run: the last one that wrote into a folder"));
  EXPECT_TRUE(holds(place.kivsys({"analyze", "--help"}).out, "Print only results and errors"));
  EXPECT_TRUE(holds(place.kivsys({"convert", "--help"}).out, "a (yes to all)"));
}

TEST_F(Manners, TheManualPageNamesTheFoldersOfUndo) {
  const std::string man = place.kivsys({"man"}).out;
  EXPECT_TRUE(holds(man, "\n.I .kivsys\n")) << man;
  EXPECT_TRUE(holds(man, "\n.I $XDG_STATE_HOME/kivsys\n")) << man;
}

}  // namespace
}  // namespace kiv::test
