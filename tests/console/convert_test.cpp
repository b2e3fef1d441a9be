#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

// --- what is written, and where ---

TEST_F(ConsoleConvert, WritesAPageForEverySystemBesideTheFirstInput) {
  addTwo();
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, verdictOfTwo + "WORK0001.MUS\nWORK0002.MUS\n");
  EXPECT_EQ(ended.error, needsConversionNote + createdNote(2, "WORK0001.MUS", "WORK0002.MUS"));
  EXPECT_EQ(filesIn(place.path()),
            (Names{"KivSystem1.TXT", "KivSystem2.TXT", "WORK0001.MUS", "WORK0002.MUS", "x1.mus", "x2.mus"}));
  EXPECT_EQ(dumped("WORK0001.MUS"), asDumped(numberedFluteAndBass));
  EXPECT_EQ(dumped("WORK0002.MUS"), asDumped(numberedBass));
}

TEST_F(ConsoleConvert, ResultIsNamedRelativeToTheUsersCurrentFolder) {
  addTwo();
  fs::create_directory(place.path() / "out");
  const Ended ended = place.kivsys({"convert", "--result", "out/PART0001.MUS", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, verdictOfTwo + "out/PART0001.MUS\nout/PART0002.MUS\n");
  EXPECT_EQ(filesIn(place.path() / "out"), (Names{"PART0001.MUS", "PART0002.MUS"}));
  EXPECT_EQ(filesIn(place.path()), (Names{"KivSystem1.TXT", "KivSystem2.TXT", "out", "x1.mus", "x2.mus"}));
}

TEST_F(ConsoleConvert, ResultIsNamedAsSeenFromThereWithAnotherFolderForTheRunToo) {
  addTwo("here/");
  fs::create_directories(place.path() / "reports/out");
  fs::create_directory(place.path() / "here/out");
  const Ended ended =
      place.kivsys({"convert", "--folder", "../reports", "--result", "out/WORK0001.MUS", "x1.mus", "x2.mus"}, "here");
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(filesIn(place.path() / "here/out"), (Names{"WORK0001.MUS", "WORK0002.MUS"}));
  EXPECT_EQ(filesIn(place.path() / "reports"), (Names{"KivSystem1.TXT", "KivSystem2.TXT", "out"}));
  EXPECT_EQ(filesIn(place.path() / "reports/out"), Names{});
  EXPECT_EQ(filesIn(place.path() / "here"), (Names{"out", "x1.mus", "x2.mus"}));
}

TEST_F(ConsoleConvert, WithoutAResultTheFirstPagesFolderIsUsedWhateverTheRunsFolderIs) {
  addTwo("music/");
  fs::create_directory(place.path() / "reports");
  EXPECT_EQ(place.kivsys({"convert", "--folder", "reports", "music/x1.mus", "music/x2.mus"}).status, 0);
  EXPECT_EQ(filesIn(place.path() / "reports"), (Names{"KivSystem1.TXT", "KivSystem2.TXT"}));
  EXPECT_EQ(filesIn(place.path() / "music"), (Names{"WORK0001.MUS", "WORK0002.MUS", "x1.mus", "x2.mus"}));
}

TEST_F(ConsoleConvert, LikeThePanelSystemNumbersReplaceTheLastEightCharacters) {
  addTwo();
  const Ended ended = place.kivsys({"convert", "--like-panel", "--result", "Part 9999.pag", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(filesIn(place.path()),
            (Names{"KivSystem1.TXT", "KivSystem2.TXT", "Part 0001.MUS", "Part 0002.MUS", "x1.mus", "x2.mus"}));
  EXPECT_TRUE(ended.error.ends_with(
      shown("information", created(2, place.corePath("Part 9999.pag"), place.corePath("Part 0002.MUS")))))
      << ended.error;
}

TEST_F(ConsoleConvert, AccentsAndBlanksInTheNamesOfResultsWork) {
  addTwo();
  const std::string folder =
      "St\xC3\xBC"
      "cke und \xC3\x84hnliches";
  fs::create_directory(place.path() / folder);
  const Ended ended = place.kivsys({"convert", "--result", folder + "/WORK0001.MUS", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(filesIn(place.path() / folder), (Names{"WORK0001.MUS", "WORK0002.MUS"}));
}

TEST_F(ConsoleConvert, NamesFileGivesTheSameAsPages) {
  addTwo();
  place.kivsys({"convert", "x1.mus", "x2.mus"});
  const Names byPages = {dumped("WORK0001.MUS"), dumped("WORK0002.MUS")};
  fs::remove(place.path() / "WORK0001.MUS");
  fs::remove(place.path() / "WORK0002.MUS");
  place.write("names.txt", place.corePath("x1.mus") + " 1\r\n" + place.corePath("x2.mus") + " 1\r\n");
  EXPECT_EQ(place.kivsys({"convert", "--names", "names.txt"}).status, 0);
  EXPECT_EQ((Names{dumped("WORK0001.MUS"), dumped("WORK0002.MUS")}), byPages);
  EXPECT_NE(place.read("names.txt"), "(no file)");
}

TEST_F(ConsoleConvert, NamesFileIsLookedForInTheUsersCurrentFolderAndThenInTheRunsFolder) {
  addTwo();
  place.write("out/names.txt", place.corePath("x1.mus") + " 1\r\n" + place.corePath("x2.mus") + " 1\r\n");
  const Ended inRunsFolder = place.kivsys({"convert", "--folder", "out", "--names", "names.txt"});
  EXPECT_TRUE(inRunsFolder.out.starts_with(verdictOfTwo)) << inRunsFolder.out;
  place.write("names.txt", place.corePath("x2.mus") + " 1\r\n");
  EXPECT_EQ(place.kivsys({"convert", "--folder", "out", "--names", "names.txt"}).out, verdictOfOne);
}

TEST_F(ConsoleConvert, FilesOfAPageBecomeOne) {
  addPage("x1a.mus", "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  addPage("x1b.mus", bass);
  const Ended ended = place.kivsys({"convert", "x1a.mus", "x1b.mus"});
  EXPECT_EQ(ended.out, "CONSISTENCY=YES\nMULTIFILE=YES\nFiles: 2\nSystems: 1\nInstruments: 2\nWORK0001.MUS\n");
  EXPECT_EQ(dumped("WORK0001.MUS"), asDumped(numberedFluteAndBass));
}

TEST_F(ConsoleConvert, InputsAreNotTouched) {
  addTwo();
  const Names before = {place.read("x1.mus"), place.read("x2.mus")};
  place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ((Names{place.read("x1.mus"), place.read("x2.mus")}), before);
}

// --- input that qualifies ---

TEST_F(ConsoleConvert, InputThatQualifiesIsNotConverted) {
  addPage("x1.mus", bass);
  place.write("WORK0001.MUS", "old");
  const Ended ended = place.kivsys({"convert", "x1.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, verdictOfOne);
  EXPECT_EQ(ended.error, qualifiesNote +
                             "kivsys: note: no results were written, as the pages can be used without a conversion\n"
                             "Next: kivsys convert --force x1.mus --result converted/WORK0001.MUS\n");
  EXPECT_EQ(place.read("WORK0001.MUS"), "old");
}

TEST_F(ConsoleConvert, InputThatQualifiesIsConvertedByForceAndTheMessageStays) {
  addPage("x1.mus", bass);
  const Ended ended = place.kivsys({"convert", "--force", "x1.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, verdictOfOne + "WORK0001.MUS\n");
  EXPECT_EQ(ended.error, qualifiesNote + createdNote(1, "WORK0001.MUS", "WORK0001.MUS"));
  EXPECT_EQ(dumped("WORK0001.MUS"),
            asDumped("item 10 1 -4 0 102 0.7\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n"));
}

TEST_F(ConsoleConvert, ForceChangesNothingForInputThatNeedsAConversion) {
  addTwo();
  const Ended plain = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(place.kivsys({"undo"}).status, 0);
  const Ended forced = place.kivsys({"convert", "--force", "x1.mus", "x2.mus"});
  EXPECT_EQ(forced.status, plain.status);
  EXPECT_EQ(forced.out, plain.out);
  EXPECT_EQ(forced.error, plain.error);
}

}  // namespace
}  // namespace kiv::test
