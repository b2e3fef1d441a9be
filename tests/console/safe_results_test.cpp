#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// What a run writes is never what it reads.
class SafeResults : public ConsoleConvert {
 protected:
  void expectRefused(const Names& arguments, const std::string& error) const {
    const Names before = filesIn(place.path());
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 2) << ::testing::PrintToString(arguments);
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.error, error);
    EXPECT_EQ(filesIn(place.path()), before);
  }
  std::string path(const std::string& file) const { return (place.path() / file).string(); }
  std::string sameFile(const std::string& output, const std::string& input) const {
    return "kivsys: the " + output.substr(0, output.find(':')) + " " + path(output.substr(output.find(':') + 1)) +
           " is the same file as the input " + path(input) + "\n";
  }
  void addFour() const {
    addPage("P0001.MUS", fluteAndBass);
    addPage("P0002.MUS", bass);
    addPage("P0003.MUS", bass);
    addPage("P0004.MUS", bass);
  }
};

TEST_F(SafeResults, AResultIsNeverAnInput) {
  addFour();
  const std::string before = place.read("P0001.MUS");
  const std::string error = sameFile("result:P0001.MUS", "P0001.MUS") + sameFile("result:P0002.MUS", "P0002.MUS");
  for (const std::string verb : {"convert", "trace"}) {
    for (const std::string result : {"P0001.MUS", "./P0001.MUS"}) {
      expectRefused({verb, "--result", result, "P0001.MUS", "P0002.MUS"}, error);
    }
  }
  expectRefused({"convert", "--dry-run", "--result", "P0001.MUS", "P0001.MUS", "P0002.MUS"}, error);
  EXPECT_EQ(place.read("P0001.MUS"), before);
  EXPECT_EQ(place.kivsys({"convert", "--like-panel", "--result", "P0001.MUS", "P0001.MUS", "P0002.MUS"}).status, 0);
  EXPECT_NE(place.read("P0001.MUS"), before);
}

TEST_F(SafeResults, AResultIsNoInputUnderAnotherNameEither) {
  addTwo();
  fs::create_symlink("x1.mus", place.path() / "R0002.MUS");
  expectRefused({"convert", "--result", "R0001.MUS", "x1.mus", "x2.mus"}, sameFile("result:R0002.MUS", "x1.mus"));
  fs::remove(place.path() / "R0002.MUS");
  fs::create_hard_link(place.path() / "x2.mus", place.path() / "r0001.mus");
  expectRefused({"convert", "--result", "R0001.MUS", "x1.mus", "x2.mus"}, sameFile("result:r0001.mus", "x2.mus"));
}

TEST_F(SafeResults, APipeIsNoPlaceForAResult) {
  addTwo();
  ASSERT_EQ(::mkfifo(path("R0002.MUS").c_str(), 0600), 0);
  expectRefused({"convert", "--result", "R0001.MUS", "x1.mus", "x2.mus"},
                "kivsys: the result " + path("R0002.MUS") + " is a device or a pipe, and is not replaced\n");
  EXPECT_TRUE(fs::is_fifo(path("R0002.MUS")));
}

TEST_F(SafeResults, OnlyResultsThatThereWillBeCount) {
  addTwo();
  fs::create_symlink("x1.mus", place.path() / "R0003.MUS");
  EXPECT_EQ(place.kivsys({"convert", "--result", "R0001.MUS", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_TRUE(fs::is_symlink(place.path() / "R0003.MUS"));
  addPage("Q0001.MUS", bass);
  EXPECT_EQ(place.kivsys({"convert", "--result", "Q0001.MUS", "Q0001.MUS"}).status, 0) << "it qualifies";
  expectRefused({"convert", "--force", "--result", "Q0001.MUS", "Q0001.MUS"},
                sameFile("result:Q0001.MUS", "Q0001.MUS"));
}

TEST_F(SafeResults, AResultBesideTheFirstPageIsNoInput) {
  addPage("a1.mus", fluteAndBass);
  addPage("WORK0002.MUS", bass);
  expectRefused({"convert", "a1.mus", "WORK0002.MUS"}, sameFile("result:WORK0002.MUS", "WORK0002.MUS"));
}

TEST_F(SafeResults, ReportVerdictAndDumpAreNoInputs) {
  addPage("x1.mus", bass);
  for (const std::string file : {"KivSystem2.TXT", "KivSystem1.TXT", "KivSystemDump.txt"}) {
    place.write(file, place.corePath("x1.mus") + " 1\r\n");
  }
  expectRefused({"analyze", "--names", "KivSystem2.TXT"}, sameFile("report:KivSystem2.TXT", "KivSystem2.TXT"));
  expectRefused({"convert", "--names", "KivSystem1.TXT"}, sameFile("verdict:KivSystem1.TXT", "KivSystem1.TXT"));
  expectRefused({"trace", "--names", "KivSystemDump.txt"}, sameFile("dump:KivSystemDump.txt", "KivSystemDump.txt"));
}

TEST_F(SafeResults, ASortedPageIsNoInput) {
  addPage("X1.PAG", bass);
  addPage("X1.MUS", bass);
  expectRefused({"sort", "X1.PAG"}, sameFile("sorted page:X1.PAG", "X1.PAG"));
  expectRefused({"sort", "X1.MUS", "X1.PAG"},
                sameFile("sorted page:X1.PAG", "X1.PAG") + sameFile("sorted page:X1.PAG", "X1.PAG"));
  EXPECT_EQ(place.kivsys({"sort", "--like-panel", "X1.PAG"}).status, 0);
}

TEST_F(SafeResults, TheFirstResultEndsIn0001) {
  addTwo();
  fs::create_directory(place.path() / "dir");
  const std::vector<std::pair<std::string, std::string>> names = {{"out", "out/WORK0001.MUS"},
                                                                  {"out.txt", ""},
                                                                  {"WORK0002.MUS", "WORK0001.MUS"},
                                                                  {"0001.PAG", ""},
                                                                  {"001.MUS", "0010001.MUS"}};
  for (const auto& [result, meant] : names) {
    const std::string error = "kivsys: the name of the first result must end in 0001.MUS: " + result +
                              (meant.empty() ? "" : "; name it with --result " + meant) + "\n";
    expectRefused({"convert", "--result", result, "x1.mus", "x2.mus"}, error);
    expectRefused({"verify", "--result", result, "x1.mus", "x2.mus"}, error);
  }
  EXPECT_EQ(place.kivsys({"convert", "--result", "dir/part0001.mus", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_EQ(filesIn(place.path() / "dir"), (Names{"part0001.MUS", "part0002.MUS"}));
}

TEST_F(SafeResults, AMissingFolderOfResultsIsMade) {
  addTwo();
  const Ended ended = place.kivsys({"convert", "--result", "out/WORK0001.MUS", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_NE(ended.error.find("kivsys: made the folder out/\n"), std::string::npos) << ended.error;
  EXPECT_EQ(filesIn(place.path() / "out"), (Names{"WORK0001.MUS", "WORK0002.MUS"}));
  expectRefused({"convert", "--result", "far/away/WORK0001.MUS", "x1.mus", "x2.mus"},
                "kivsys: cannot make the folder far/away/, as the one above it does not exist\n");
  expectRefused({"convert", "--result", "x1.mus/WORK0001.MUS", "x1.mus", "x2.mus"}, "kivsys: not a folder: x1.mus/\n");
}

TEST_F(SafeResults, AFolderOfResultsIsNotMadeForNothing) {
  addPage("x1.mus", bass);
  EXPECT_EQ(place.kivsys({"convert", "--result", "out/WORK0001.MUS", "x1.mus"}).status, 0) << "it qualifies";
  EXPECT_FALSE(fs::exists(place.path() / "out"));
  EXPECT_EQ(place.kivsys({"convert", "--force", "--dry-run", "--result", "out/WORK0001.MUS", "x1.mus"}).status, 0);
  EXPECT_FALSE(fs::exists(place.path() / "out"));
}

TEST_F(SafeResults, AMissingFolderOfTheRunIsMade) {
  addTwo();
  const Ended ended = place.kivsys({"analyze", "--folder", "out", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_TRUE(ended.error.starts_with("kivsys: made the folder out\nNext: kivsys convert ")) << ended.error;
  EXPECT_EQ(filesIn(place.path() / "out"), (Names{"KivSystem1.TXT", "KivSystem2.TXT"}));
  expectRefused({"analyze", "--folder", "far/away", "x1.mus", "x2.mus"},
                "kivsys: cannot make the folder far/away, as the one above it does not exist\n");
  expectRefused({"analyze", "--folder", "new", "x1.mus", "gone2.mus"},
                "kivsys: cannot read gone2.mus: No such file or directory\n");
  EXPECT_EQ(place.kivsys({"convert", "--dry-run", "--folder", "new", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_FALSE(fs::exists(place.path() / "new"));
}

TEST_F(SafeResults, BuildReplacesAPageByForceOnly) {
  addPage("x1.mus", bass);
  place.write("x1.txt", fluteAndBass);
  expectRefused({"build", "x1.txt", "x1.mus"}, "kivsys: x1.mus exists; --force replaces it\n");
  EXPECT_EQ(dumped("x1.mus"), asDumped(bass));
  EXPECT_EQ(place.kivsys({"build", "--force", "x1.txt", "x1.mus"}).status, 0);
  EXPECT_EQ(dumped("x1.mus"), asDumped(fluteAndBass));
  expectRefused({"build", "--force", "x1.txt", "x1.txt"},
                "kivsys: the page x1.txt is the same file as the input x1.txt\n");
  place.write("notes.txt", "my notes\n");
  expectRefused({"build", "--force", "x1.txt", "notes.txt"},
                "kivsys: notes.txt is not a page, and is not replaced; name another file\n");
  EXPECT_EQ(place.read("notes.txt"), "my notes\n");
  place.write("damaged.mus", "x");
  EXPECT_EQ(place.kivsys({"build", "--force", "x1.txt", "damaged.mus"}).status, 0);
}

TEST_F(SafeResults, AFolderThatIsThereAsItIsWrittenIsTheOneThatIsMeant) {
  addTwo();
  for (const char* folder : {"R", "r"}) {
    fs::create_directory(place.path() / folder);
  }
  place.write("r/WORK0001.MUS", "another run's");
  EXPECT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus", "--result", "R/WORK0001.MUS"}).status, 0);
  EXPECT_EQ(place.read("r/WORK0001.MUS"), "another run's");
  EXPECT_EQ(filesIn(place.path() / "R"), (Names{"WORK0001.MUS", "WORK0002.MUS"}));
}

TEST_F(SafeResults, AFolderOfResultsInAnotherCaseIsAnotherFolder) {
  addTwo();
  place.write("out/W0001.MUS", "my only copy");
  place.write("out/x1.mus", "mine");
  EXPECT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus", "--result", "Out/W0001.MUS"}).status, 0);
  EXPECT_EQ(filesIn(place.path() / "Out"), (Names{"W0001.MUS", "W0002.MUS"}));
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "--map", "101=7", "-o", "OUT"}).status, 0);
  EXPECT_EQ(filesIn(place.path() / "OUT"), Names{"x1.mus"});
  EXPECT_EQ(place.kivsys({"fix", "OUT/x1.mus", "--map", "102=8", "-o", "oUT"}).status, 0);
  EXPECT_EQ(place.read("out/W0001.MUS"), "my only copy");
  EXPECT_EQ(place.read("out/x1.mus"), "mine");
}

TEST_F(SafeResults, ATextWithoutAPageReplacesNone) {
  addPage("x1.mus", bass);
  place.write("c.txt", "* items: 0, words: 0\n \t\r\n\r");
  for (const std::string text : {"", "\n", " ", "* no more\r\n"}) {
    const Ended ended = place.kivsys({"build", "--force", "-", "x1.mus"}, ".", text);
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.error, "kivsys: -: the text describes no page\n");
  }
  EXPECT_EQ(place.kivsys({"build", "c.txt", "new.mus"}).error, "kivsys: c.txt: the text describes no page\n");
  EXPECT_EQ(dumped("x1.mus"), asDumped(bass));
  EXPECT_EQ(place.kivsys({"build", "--force", "-", "x1.mus"}, ".", "trailer").status, 0) << "as dump writes it";
}

TEST_F(SafeResults, AFolderThatCannotBeMadeIsAFailure) {
  addTwo();
  fs::create_directory(place.path() / "closed");
  fs::permissions(place.path() / "closed", fs::perms::owner_read | fs::perms::owner_exec);
  const Ended analyzed = place.kivsysAsOwner({"analyze", "--folder", "closed/new", "x1.mus", "x2.mus"});
  EXPECT_EQ(analyzed.status, 1);
  EXPECT_EQ(analyzed.error, "kivsys: cannot make the folder closed/new: Permission denied\n");
  const Ended converted = place.kivsysAsOwner({"convert", "x1.mus", "x2.mus", "--result", "closed/new/WORK0001.MUS"});
  EXPECT_EQ(converted.status, 1);
  EXPECT_TRUE(converted.error.ends_with("kivsys: cannot make the folder closed/new/: Permission denied\n"))
      << converted.error;
  fs::permissions(place.path() / "closed", fs::perms::owner_all);
}

TEST_F(SafeResults, AFolderThatCannotBeListedIsRefused) {
  addTwo();
  fs::create_directory(place.path() / "hidden");
  fs::permissions(place.path() / "hidden", fs::perms::owner_write | fs::perms::owner_exec);
  const Ended ended = place.kivsysAsOwner({"convert", "x1.mus", "x2.mus", "--result", "hidden/WORK0001.MUS"});
  fs::permissions(place.path() / "hidden", fs::perms::owner_all);
  EXPECT_EQ(ended.status, 2);
  EXPECT_NE(ended.error.find("cannot list the folder of the results"), std::string::npos) << ended.error;
  fs::permissions(place.path() / "hidden", fs::perms::owner_all);
}

}  // namespace
}  // namespace kiv::test
