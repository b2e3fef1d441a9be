#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/console/json_schema.h"
#include "tests/console/undo_fixture.h"

namespace kiv::test {
namespace {

TEST_F(Undo, WhatARunMadeIsRemoved) {
  const Snapshot before = snapshot();
  EXPECT_EQ(convert().status, 0);
  EXPECT_TRUE(fs::exists(place.path() / "out/WORK0002.MUS"));
  expectUndone(before);
  expectNothingToUndo();
  EXPECT_EQ(filesIn(place.stateFolder() / "kivsys/undo"), Names{});
}

TEST_F(Undo, WhatARunReplacedIsBackWithItsTimeAndMode) {
  for (const std::string file : {"out/WORK0001.MUS", "KivSystem1.TXT", "KivSystem2.TXT"}) {
    addOld(file, "old " + file);
  }
  const Snapshot before = snapshot();
  EXPECT_EQ(convert().status, 0);
  EXPECT_NE(place.read("out/WORK0001.MUS"), "old out/WORK0001.MUS");
  expectUndone(before, "out");
}

TEST_F(Undo, AReplacedFileOfTheSameBytesHasItsTimeAgain) {
  EXPECT_EQ(convert().status, 0);
  addOld("out/WORK0001.MUS", place.read("out/WORK0001.MUS"));
  addOld("KivSystem1.TXT", place.read("KivSystem1.TXT"));
  const Snapshot before = snapshot();
  EXPECT_EQ(convert().status, 0);
  expectUndone(before);
}

TEST_F(Undo, ADumpThatIsWrittenInPlaceIsBack) {
  addOld("KivSystemDump.txt", "old dump");
  const Snapshot before = snapshot();
  EXPECT_EQ(place.kivsys({"trace", "x1.mus", "x2.mus", "--result", "out/WORK0001.MUS"}).status, 0);
  EXPECT_NE(place.read("KivSystemDump.txt"), "old dump");
  expectUndone(before);
}

TEST_F(Undo, ASortIsUndone) {
  addOld("X1.PAG");
  const Snapshot before = snapshot();
  EXPECT_EQ(place.kivsys({"sort", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_NE(place.read("X1.PAG"), "old");
  expectUndone(before);
}

TEST_F(Undo, CorrectedPagesAreUndone) {
  addOld("out/x1.mus");
  const Snapshot before = snapshot();
  const Ended fixed = place.kivsys({"fix", "x1.mus", "x2.mus", "--map", "102=103", "-o", "out", "--force"});
  EXPECT_EQ(fixed.status, 0) << fixed.error;
  EXPECT_NE(place.read("out/x1.mus"), "old");
  expectUndone(before, "out");
}

TEST_F(Undo, FoldersThatTheRunMadeAreRemoved) {
  const Snapshot before = snapshot();
  EXPECT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus", "--folder", "run", "--result", "new/WORK0001.MUS"}).status, 0);
  EXPECT_TRUE(fs::exists(place.path() / "new/WORK0001.MUS"));
  expectUndone(before, "new");
  EXPECT_FALSE(fs::exists(place.path() / "run"));
}

TEST_F(Undo, AFolderThatOtherFilesAreInStays) {
  EXPECT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus", "--result", "new/WORK0001.MUS"}).status, 0);
  place.write("new/mine.txt", "mine");
  EXPECT_EQ(place.kivsys({"undo", "new"}).status, 0);
  EXPECT_EQ(filesIn(place.path() / "new"), Names{"mine.txt"});
}

TEST_F(Undo, ALinkIsBackAndWhatItLeadsToAsWell) {
  addOld("elsewhere/old.mus");
  addOld("elsewhere/report.txt");
  fs::create_symlink("../elsewhere/old.mus", place.path() / "out/WORK0001.MUS");
  fs::create_symlink("elsewhere/report.txt", place.path() / "KivSystem2.TXT");
  const Snapshot before = snapshot();
  EXPECT_EQ(convert().status, 0);
  EXPECT_NE(place.read("elsewhere/old.mus"), "old");
  EXPECT_EQ(place.read("elsewhere/report.txt"), "old");
  expectUndone(before, "out");
}

TEST_F(Undo, AFileThatHasChangedSinceRefusesAll) {
  addOld("out/WORK0001.MUS");
  EXPECT_EQ(convert().status, 0);
  place.write("out/WORK0002.MUS", "edited");
  place.write("KivSystem1.TXT", "edited");
  const Snapshot before = snapshot();
  const Ended ended = place.kivsys({"undo"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.error, "kivsys: " + path("out/WORK0002.MUS") +
                             " has changed since\nkivsys: " + path("KivSystem1.TXT") +
                             " has changed since\nkivsys: nothing is undone\nNext: kivsys undo --keep-changed\n");
  EXPECT_EQ(snapshot(), before);
}

constexpr const char* nothingIsUndone = "kivsys: nothing is undone\nNext: kivsys undo --keep-changed\n";

TEST_F(Undo, AKeptFileThatHasChangedRefusesAll) {
  addOld("out/WORK0001.MUS");
  EXPECT_EQ(convert().status, 0);
  const std::string kept = "out/.kivsys/" + filesIn(place.path() / "out/.kivsys").at(0);
  place.write(kept, "changed");
  const Snapshot before = snapshot();
  EXPECT_EQ(place.kivsys({"undo"}).error, "kivsys: the old " + path("out/WORK0001.MUS") + ", " + path(kept) +
                                              ", has changed since\n" + nothingIsUndone);
  EXPECT_EQ(snapshot(), before);
  fs::remove(place.path() / kept);
  EXPECT_EQ(place.kivsys({"undo"}).error,
            "kivsys: the old " + path("out/WORK0001.MUS") + " is no longer " + path(kept) + "\n" + nothingIsUndone);
}

TEST_F(Undo, AFileThatIsMissingNowIsRestoredOnRequest) {
  addOld("out/WORK0001.MUS");
  const Snapshot before = snapshot();
  EXPECT_EQ(convert().status, 0);
  fs::remove(place.path() / "out/WORK0001.MUS");
  EXPECT_EQ(place.kivsys({"undo"}).status, 2);
  const Ended ended = place.kivsys({"undo", "--keep-changed"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(ended.out.starts_with(path("out/WORK0001.MUS") + ": restored\n")) << ended.out;
  EXPECT_EQ(snapshot(), before);
}

TEST_F(Undo, WhatARunHadReplacedGetsANameBesideAFileThatStays) {
  addOld("out/WORK0001.MUS", "replaced");
  addOld("out/WORK0001.MUS.old", "mine");
  EXPECT_EQ(convert().status, 0);
  place.write("out/WORK0001.MUS", "edited");
  const std::string left = path("out/WORK0001.MUS") + ": has changed since, ";
  const std::string old = path("out/WORK0001.MUS.old2") + "\n";
  const Ended dry = place.kivsys({"undo", "--keep-changed", "--dry-run"});
  EXPECT_NE(dry.out.find(left + "would stay as it is; what the run had replaced would be " + old), std::string::npos)
      << dry.out;
  EXPECT_EQ(Json::parse(place.kivsys({"undo", "--keep-changed", "--dry-run", "--json"}).out)["set_aside"],
            Json({path("out/WORK0001.MUS.old2")}));
  const Ended ended = place.kivsys({"undo", "--keep-changed"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_NE(ended.out.find(left + "left as it is; what the run had replaced is " + old), std::string::npos)
      << ended.out;
  EXPECT_EQ(place.read("out/WORK0001.MUS"), "edited");
  EXPECT_EQ(place.read("out/WORK0001.MUS.old"), "mine");
  EXPECT_EQ(place.read("out/WORK0001.MUS.old2"), "replaced");
  EXPECT_FALSE(hasKept("out"));
}

TEST_F(Undo, AKeptFileThatHasChangedIsNotLostEither) {
  addOld("out/WORK0001.MUS", "replaced");
  addOld("KivSystem2.TXT", "mine");
  EXPECT_EQ(convert().status, 0);
  const std::string result = place.read("out/WORK0001.MUS");
  place.write("out/.kivsys/" + filesIn(place.path() / "out/.kivsys").at(0), "damaged");
  EXPECT_EQ(place.kivsys({"undo", "--keep-changed"}).status, 0);
  EXPECT_EQ(place.read("KivSystem2.TXT"), "mine");
  EXPECT_EQ(place.read("out/WORK0001.MUS"), result);
  EXPECT_EQ(place.read("out/WORK0001.MUS.old"), "damaged");
}

TEST_F(Undo, ARunThatFailsAtAFolderInItsWayIsUndone) {
  addOld("out/WORK0001.MUS");
  fs::create_directory(place.path() / "out/WORK0002.MUS");
  const Snapshot before = snapshot();
  const Ended ended = convert();
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error.find("cannot be undone"), std::string::npos) << ended.error;
  EXPECT_NE(place.read("out/WORK0001.MUS"), "old");
  expectUndone(before);
}

TEST_F(Undo, OldFilesAreKeptOnlyWhereOneWasReplaced) {
  EXPECT_EQ(convert().status, 0);
  EXPECT_FALSE(hasKept("out"));
  EXPECT_FALSE(hasKept(""));
  EXPECT_EQ(convert().status, 0);
  EXPECT_TRUE(hasKept("out"));
  EXPECT_EQ(filesIn(place.path() / "out/.kivsys").size(), 2U);
}

TEST_F(Undo, OnlyTheLastRunOfAFolderIsKnown) {
  addOld("out/WORK0001.MUS");
  EXPECT_EQ(convert().status, 0);
  const Snapshot before = snapshot();
  EXPECT_EQ(convert({"--no-instr-number"}).status, 0);
  EXPECT_EQ(filesIn(place.path() / "out/.kivsys").size(), 2U) << "the files of the first run are gone";
  Snapshot expected = before;
  std::erase_if(expected, [](const auto& file) { return file.first.find(".kivsys") != std::string::npos; });
  expectUndone(expected);
  expectNothingToUndo();
  expectNothingToUndo("out");
}

TEST_F(Undo, ARunIsUndoneInAllItsFoldersFromEachOfThem) {
  const Snapshot before = snapshot();
  for (const std::string folder : {".", "out"}) {
    EXPECT_EQ(convert().status, 0);
    expectUndone(before, folder);
    expectNothingToUndo(".");
    expectNothingToUndo("out");
  }
}

TEST_F(Undo, ARunInOneOfTheFoldersEndsTheUndoOfTheOneBefore) {
  EXPECT_EQ(convert().status, 0);
  EXPECT_EQ(place.kivsys({"sort", "x1.mus"}).status, 0);
  expectNothingToUndo("out");
  EXPECT_EQ(place.kivsys({"undo"}).status, 0);
  EXPECT_FALSE(fs::exists(place.path() / "X1.PAG"));
  EXPECT_TRUE(fs::exists(place.path() / "out/WORK0001.MUS"));
}

TEST_F(Undo, ADryRunChangesNothingAndPrintsWhatWouldBeDone) {
  addOld("out/WORK0001.MUS");
  EXPECT_EQ(convert().status, 0);
  const Snapshot before = snapshot();
  const Ended ended = place.kivsys({"undo", "--dry-run"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(ended.out.starts_with(path("out/WORK0001.MUS") + ": would be restored\n" + path("out/WORK0002.MUS") +
                                    ": would be removed\n"))
      << ended.out;
  EXPECT_EQ(snapshot(), before);
}

TEST_F(Undo, JsonHasWhatWasDone) {
  addOld("out/WORK0001.MUS");
  EXPECT_EQ(convert().status, 0);
  const Json object = Json::parse(place.kivsys({"undo", "--json", "out"}).out);
  EXPECT_EQ(object["end"], "normal");
  EXPECT_EQ(object["command"], "convert");
  EXPECT_EQ(object["dry_run"], false);
  EXPECT_EQ(object["restored"], Json::array({path("out/WORK0001.MUS")}));
  EXPECT_EQ(object["removed"], Json::array({path("out/WORK0002.MUS"), path("KivSystem1.TXT"), path("KivSystem2.TXT")}));
  EXPECT_EQ(object["folders"].size(), 2U);
  EXPECT_EQ(schemaErrors(object, "undo"), Names{});
}

TEST_F(Undo, AStateFolderThatCannotBeWrittenIsAWarning) {
  place.write("../" + place.stateFolder().parent_path().filename().string() + "/state", "a file");
  const Ended ended = convert();
  EXPECT_EQ(ended.status, 0);
  EXPECT_TRUE(fs::exists(place.path() / "out/WORK0002.MUS"));
  const std::string warning = "kivsys: this run cannot be undone: cannot write to " + place.stateFolder().string() +
                              "/kivsys/undo: File exists\n";
  EXPECT_EQ(ended.error.substr(0, warning.size()), warning);
  EXPECT_EQ(ended.error.find("cannot be undone", warning.size()), std::string::npos) << "it is one line";
  EXPECT_EQ(place.kivsys({"undo"}).status, 2);
}

TEST_F(Undo, NoUndoAndLikePanelWriteNoJournal) {
  addOld("out/WORK0001.MUS");
  for (const std::string option : {"--no-undo", "--like-panel", "--dry-run"}) {
    EXPECT_EQ(convert({option}).status, 0) << option;
    EXPECT_FALSE(hasKept("out")) << option;
    EXPECT_FALSE(fs::exists(place.stateFolder())) << option;
  }
  EXPECT_EQ(place.kivsys({"sort", "x1.mus", "--no-undo"}).status, 0);
  EXPECT_EQ(place.kivsys({"trace", "x1.mus", "x2.mus", "--no-undo"}).status, 0);
  EXPECT_EQ(place.kivsys({"analyze", "x1.mus"}).status, 0);
  EXPECT_FALSE(fs::exists(place.stateFolder()));
}

}  // namespace
}  // namespace kiv::test
