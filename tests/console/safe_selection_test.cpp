#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"
#include "tests/console/json_schema.h"

namespace kiv::test {
namespace {

/// Names files and page names on the command line: they are only read, and what is named is what is read.
class SafeSelection : public ConsoleConvert {
 protected:
  void expectRefused(const Names& arguments, const std::string& error, const std::string& input = "") const {
    const Names before = filesIn(place.path());
    const Ended ended = place.kivsys(arguments, ".", input);
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.error, error);
    EXPECT_EQ(filesIn(place.path()), before);
  }
  std::string path(const std::string& file) const { return (place.path() / file).string(); }
};

TEST_F(SafeSelection, ALineOfAPlainListIsMeantAsItIsWritten) {
  addPage("x1.mus", bass);
  addPage("*x2.mus", bass);
  addPage(" x3.mus", bass);
  addPage("x4.mus ", bass);
  const Ended ended = place.kivsys({"chart", "--names", "-"}, ".", "* a comment\nx1.mus\n*x2.mus\n x3.mus\nx4.mus \n");
  EXPECT_NE(ended.error.find("kivsys: *x2.mus: File naming problem; "), std::string::npos) << ended.error;
  const Ended blank = place.kivsys({"chart", "--names", "-"}, ".", " a comment\nx1.mus  \n x3.mus\n");
  EXPECT_NE(blank.error.find("kivsys:  x3.mus: File naming problem; "), std::string::npos) << blank.error;
}

TEST_F(SafeSelection, AGroupHasAtMost32767Pages) {
  addPage("x1.mus", bass);
  std::string list;
  for (int i = 0; i < 32768; ++i) {
    list += "x1.mus\n";
  }
  const Ended ended = place.kivsys({"analyze", "--names", "-"}, ".", list);
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.error, "kivsys: -:32768: a group cannot have more than 32767 pages: x1.mus\n");
}

TEST_F(SafeSelection, AFileWhoseNameHoldsABackslashIsNotTakenForAnother) {
  addPage("a/x1.mus", bass);
  place.write("a\\x1.mus", "another");
  for (const Names& command : {Names{"dump", "a\\x1.mus"}, {"draw", "a\\x1.mus"}, {"analyze", "a\\x1.mus"}}) {
    const Ended ended = place.kivsys(command);
    EXPECT_EQ(ended.status, 2) << command.front();
    EXPECT_NE(ended.error.find("whose name holds a backslash cannot be used: a\\x1.mus"), std::string::npos);
  }
  place.write("x1.txt", fluteAndBass);
  EXPECT_EQ(place.kivsys({"build", "--force", "x1.txt", "a\\x1.mus"}).status, 2);
  EXPECT_EQ(dumped("a/x1.mus"), asDumped(bass));
}

TEST_F(SafeSelection, DumpAndBuildMeanTheFolderThatIsNamed) {
  fs::create_directory(place.path() / "lib");
  addPage("LIB/x1.mus", bass);
  place.write("x1.txt", fluteAndBass);
  EXPECT_EQ(place.kivsys({"dump", "lib/x1.mus"}).status, 2);
  EXPECT_EQ(place.kivsys({"build", "x1.txt", "lib/x1.mus"}).status, 0);
  EXPECT_EQ(dumped("lib/x1.mus"), asDumped(fluteAndBass));
  EXPECT_EQ(dumped("LIB/x1.mus"), asDumped(bass));
}

TEST_F(SafeSelection, ANameOfAPageIsNoCallOfASibling) {
  place.write("list.txt", "\\nope\\P001.MUS 1\r\n");
  place.write("KivSystem1.TXT", "old");
  const std::string page = "A,FUNCTION=ANALYZE,NAMES=list.txt,.MUS";
  addPage(page, bass);
  EXPECT_EQ(place.kivsys({"dump", page}).status, 0);
  EXPECT_NE(place.kivsys({"analyze", page}).status, 0);
  EXPECT_NE(place.read("list.txt"), "(no file)");
  EXPECT_EQ(place.kivsys({"X,FUNCTION=ANALYZE,NAMES=list.txt"}).status, 1) << "a call";
  EXPECT_EQ(place.read("KivSystem1.TXT"), "(no file)");
}

TEST_F(SafeSelection, ADriveIsAFolderOfTheRun) {
  addPage("C:/m/x0001.mus", bass);
  addPage("run/C:/m/x0001.mus", fluteAndBass);
  place.write("names.txt", "C:\\m\\x0001.mus 1\r\n");
  const Ended ended =
      place.kivsys({"convert", "--force", "--names", "names.txt", "--folder", "run", "--result", "run/C:/m/x0001.mus"});
  EXPECT_EQ(ended.status, 2) << ended.error;
  EXPECT_EQ(dumped("run/C:/m/x0001.mus"), asDumped(fluteAndBass));
}

TEST_F(SafeSelection, AnEmptyValueIsRefused) {
  addPage("x1.mus", bass);
  for (const std::string option : {"--result", "--folder", "--names"}) {
    EXPECT_EQ(place.kivsys({"convert", "x1.mus", option, ""}).status, 2) << option;
  }
  EXPECT_EQ(place.kivsys({"draw", "x1.mus", "--out", ""}).status, 2);
}

TEST_F(SafeSelection, StandardInputThatCannotBeReadIsNotEmpty) {
  for (const std::string input : {"<&-", "</"}) {
    const std::string command =
        "cd '" + place.path().string() + "' && '" + KIVSYS_PROGRAM + "' build - z.mus 2>error " + input;
    EXPECT_NE(std::system(command.c_str()), 0) << input;
    EXPECT_EQ(place.read("z.mus"), "(no file)");
    EXPECT_NE(place.read("error"), "");
  }
}

TEST_F(SafeSelection, WithoutStandardOutputNoFileTakesItsNumber) {
  addPage("lib/x1.mus", bass);
  const std::string command =
      "cd '" + place.path().string() + "' && '" + KIVSYS_PROGRAM + "' survey lib --resume state >&- 2>error";
  EXPECT_NE(std::system(command.c_str()), 0);
  EXPECT_TRUE(place.read("state").starts_with("{\"kivsys_survey_state\"")) << place.read("state");
  EXPECT_EQ(place.read("state").find("folder  "), std::string::npos) << "the table";
}

TEST_F(SafeSelection, ARecordWithSlashesIsExplained) {
  addPage("x1.mus", bass);
  place.write("names.txt", path("x1.mus") + " 1\r\n");
  expectRefused({"analyze", "--names", "names.txt"},
                "kivsys: names.txt:1: no folder in the name of the page: " + path("x1.mus") +
                    "; write \\ for /, or leave out the 1 at the ends of all lines\n");
}

TEST_F(SafeSelection, ANamesFileIsOnlyReadAndAllItsErrorsHaveTheirLine) {
  addPage("x1.mus", bass);
  addPage("out/x2.mus", bass);
  const std::string names = "* mine\r\n" + place.corePath("x1.mus") + " 1\r\n" + place.corePath("gone2.mus") +
                            " 1\r\nx1.mus 1\r\n" + place.corePath("out/x2.mus") + " 1\r\n" +
                            place.corePath("gone3.mus") + " 1\r\n" + place.corePath("x1.mus") + "\r\n";
  place.write("names.txt", names);
  place.write("KivSystem1.TXT", "old");
  const std::string errors = "kivsys: names.txt:3: no such page: " + place.corePath("gone2.mus") +
                             "\nkivsys: names.txt:4: no folder in the name of the page: x1.mus\n"
                             "kivsys: names.txt:5: not in the folder of the first page: " +
                             place.corePath("out/x2.mus") +
                             "\nkivsys: names.txt:6: no such page: " + place.corePath("gone3.mus") +
                             "\nkivsys: names.txt:7: the line does not end in \" 1\", as those before it do\n";
  for (const std::string verb : {"analyze", "convert", "trace", "sort", "chart"}) {
    expectRefused({verb, "--names", "names.txt"}, errors);
    EXPECT_EQ(place.read("names.txt"), names) << verb;
    EXPECT_EQ(place.read("KivSystem1.TXT"), "old") << verb;
  }
}

TEST_F(SafeSelection, LikeThePanelANamesFileThatCannotBeUsedIsDeleted) {
  for (const std::string verb : {"analyze", "convert", "sort"}) {
    place.write("names.txt", "x1.mus 1\r\n");
    const Ended ended = place.kivsys({verb, "--like-panel", "--names", "names.txt"});
    EXPECT_NE(ended.error.find("Name must have a path prefix:\n  X1.MUS\n"), std::string::npos) << ended.error;
    EXPECT_EQ(place.read("names.txt"), "(no file)") << verb;
  }
}

TEST_F(SafeSelection, PlainPathsAreRelativeToWhereTheUserStands) {
  addPage("music/x1.mus", fluteAndBass);
  addPage("music/x2.mus", bass);
  place.write("here/list", "* pages\n../music/x1.mus\n" + path("music/x2.mus") + "\n");
  fs::create_directory(place.path() / "reports");
  const Ended ended = place.kivsys({"analyze", "--folder", "../reports", "--names", "list"}, "here");
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(ended.out.starts_with(verdictOfTwo)) << ended.out;
}

TEST_F(SafeSelection, TheListMayComeFromStandardInput) {
  addTwo();
  const Ended ended = place.kivsys({"analyze", "--names", "-"}, ".", "x1.mus\nx2.mus\n");
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(ended.out.starts_with(verdictOfTwo)) << ended.out;
  expectRefused({"chart", "--names", "-"}, "kivsys: -:2: no such page: gone.mus\n", "x1.mus\ngone.mus\n");
}

TEST_F(SafeSelection, EveryPageThatCannotBeReadIsNamedWithItsReason) {
  addPage("x1.mus", bass);
  fs::create_directory(place.path() / "x2.mus");
  const std::string errors =
      "kivsys: cannot read x2.mus: Is a directory\nkivsys: cannot read gone3.mus: No such file or directory\n";
  for (const std::string verb : {"analyze", "convert", "trace", "sort", "chart"}) {
    expectRefused({verb, "x1.mus", "x2.mus", "gone3.mus"}, errors);
  }
  expectRefused({"verify", "--result", "WORK0001.MUS", "x1.mus", "x2.mus", "gone3.mus"}, errors);
  expectRefused({"draw", "x2.mus"}, "kivsys: cannot read x2.mus: Is a directory\n");
  expectRefused({"dump", "gone3.mus"}, "kivsys: cannot read gone3.mus: No such file or directory\n");
}

TEST_F(SafeSelection, ANamesFileThatIsNotThereIsNamedWithItsReason) {
  expectRefused({"analyze", "--names", "gone.txt"}, "kivsys: cannot read gone.txt: No such file or directory\n");
}

TEST_F(SafeSelection, TheFileThatWasNamedIsTheFileThatIsRead) {
  addPage("P001.MUS", "words 99\n");
  addPage("p001.mus", bass);
  EXPECT_EQ(place.kivsys({"analyze", "p001.mus"}).status, 0);
  EXPECT_EQ(place.kivsys({"analyze", "P001.MUS"}).status, 1);
  place.write("names.txt", place.corePath("p001.mus") + " 1\r\n");
  EXPECT_EQ(place.kivsys({"analyze", "--names", "names.txt"}).status, 0);
}

TEST_F(SafeSelection, TheFolderThatWasNamedIsTheFolderThatIsUsed) {
  addTwo("lib/");
  for (const std::string other : {"Lib/", "LIB/"}) {
    addPage(other + "x1.mus", "words 99\n");
    addPage(other + "x2.mus", "words 99\n");
  }
  const Ended ended = place.kivsys({"convert", "--json", "lib/x1.mus", "lib/x2.mus"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(filesIn(place.path() / "lib"), (Names{"WORK0001.MUS", "WORK0002.MUS", "x1.mus", "x2.mus"}));
  EXPECT_EQ(filesIn(place.path() / "LIB"), (Names{"x1.mus", "x2.mus"}));
  addPage("lib/x1.mus", "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n");
  EXPECT_EQ(place.kivsys({"sort", "lib/x1.mus"}).status, 0);
  EXPECT_NE(place.read("lib/X1.PAG"), "(no file)");
}

TEST_F(SafeSelection, AboveALinkIsWhereTheSystemSays) {
  addPage("far/x1.mus", bass);
  addPage("x1.mus", "words 99\n");
  fs::create_directory(place.path() / "far/folder");
  fs::create_directory_symlink("far/folder", place.path() / "link");
  EXPECT_EQ(place.kivsys({"analyze", "link/../x1.mus"}).status, 0);
  EXPECT_EQ(place.kivsys({"analyze", "far/../x1.mus"}).status, 1);
}

TEST_F(SafeSelection, PagesThatDifferInCaseOnlyAreNoGroup) {
  addPage("p001.mus", bass);
  addPage("P001.MUS", bass);
  expectRefused({"analyze", "p001.mus", "P001.MUS"},
                "kivsys: P001.MUS and p001.mus differ in case only, and cannot be in one group\n");
  EXPECT_EQ(place.kivsys({"analyze", "p001.mus", "p001.mus"}).status, 0) << "one file twice is one file";
}

TEST_F(SafeSelection, PagesThatCannotBeOneGroupAreNotSkippedAsBadOnes) {
  addPage("p001.mus", bass);
  addPage("P001.MUS", fluteAndBass);
  addPage("lib/p002.mus", bass);
  const std::string inCase = "kivsys: P001.MUS and p001.mus differ in case only, and cannot be in one group\n";
  const std::string inFolder = "kivsys: not in the folder of the first page: lib/p002.mus\n";
  for (const std::string verb : {"analyze", "convert", "verify", "suggest", "chart", "instruments"}) {
    expectRefused({verb, "--keep-going", "p001.mus", "P001.MUS"}, inCase);
  }
  expectRefused({"report", "-o", "r.html", "p001.mus", "P001.MUS"}, inCase);
  expectRefused({"report", "-o", "r.html", "--keep-order", "p001.mus", "lib/p002.mus"}, inFolder);
}

TEST_F(SafeSelection, JsonHasThePathOfEveryFile) {
  addPage("X1.mus", fluteAndBass);
  addPage("x2.Mus", bass);
  const Json object = Json::parse(place.kivsys({"convert", "--json", "--verify", "X1.mus", "x2.Mus"}).out);
  EXPECT_EQ(schemaErrors(object, "convert"), Names());
  const Json expected = {{{"file", place.capitals("X1.mus")}, {"path", path("X1.mus")}},
                         {{"file", place.capitals("x2.Mus")}, {"path", path("x2.Mus")}},
                         {{"file", place.capitals("WORK0001.MUS")}, {"path", path("WORK0001.MUS")}},
                         {{"file", place.capitals("WORK0002.MUS")}, {"path", path("WORK0002.MUS")}}};
  EXPECT_EQ(object["paths"], expected);
  const Json verified =
      Json::parse(place.kivsys({"verify", "--json", "--result", "WORK0001.MUS", "X1.mus", "x2.Mus"}).out);
  EXPECT_EQ(schemaErrors(verified, "verify"), Names());
  EXPECT_EQ(verified["paths"][2]["path"], path("X1.mus"));
}

TEST_F(SafeSelection, NothingTemporaryIsMade) {
  addPage("X1.MUS", bass);
  addPage("X2.MUS", "words 99\n");
  EXPECT_EQ(place.kivsys({"analyze", "--keep-going", "X1.MUS", "X2.MUS", "GONE3.MUS"}).status, 1);
  EXPECT_EQ(filesIn(place.path()), (Names{"KivSystem1.TXT", "KivSystem2.TXT", "X1.MUS", "X2.MUS"}));
}

}  // namespace
}  // namespace kiv::test
