#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "tests/console/convert_fixture.h"
#include "tests/console/json_schema.h"

namespace kiv::test {
namespace {

/// Bytes, time of the last change and mode of a file; of a folder or a link what it is.
using Snapshot = std::map<std::string, std::string>;

class Undo : public ConsoleConvert {
 protected:
  void SetUp() override {
    addTwo();
    fs::create_directory(place.path() / "out");
  }
  /// A file of the user's that a run will replace, as no run would write it.
  void addOld(const std::string& file, const std::string& content = "old") const {
    place.write(file, content);
    const fs::path path = place.path() / file;
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write);
    fs::last_write_time(path, fs::last_write_time(path) - std::chrono::hours(1000) - std::chrono::nanoseconds(12345));
  }
  Snapshot snapshot() const {
    Snapshot all;
    for (const auto& entry : fs::recursive_directory_iterator(place.path())) {
      const std::string name = fs::relative(entry.path(), place.path()).string();
      struct stat status {};
      EXPECT_EQ(::lstat(entry.path().c_str(), &status), 0);
      const bool isFile = entry.is_regular_file() && !entry.is_symlink();
      all[name] =
          std::to_string(status.st_mode) + (isFile ? " " + std::to_string(status.st_mtim.tv_sec) + "." +
                                                         std::to_string(status.st_mtim.tv_nsec) + " " + place.read(name)
                                                   : "");
    }
    return all;
  }
  Ended convert(const Names& more = {}) const {
    Names arguments = {"convert", "x1.mus", "x2.mus", "--result", "out/WORK0001.MUS"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return place.kivsys(arguments);
  }
  void expectUndone(const Snapshot& before, const std::string& folder = ".") const {
    const Ended ended = place.kivsys({"undo", folder});
    EXPECT_EQ(ended.status, 0) << ended.error;
    EXPECT_EQ(snapshot(), before);
  }
  void expectNothingToUndo(const std::string& folder = ".") const {
    const Ended ended = place.kivsys({"undo", folder});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.error, "kivsys: no run in the folder " + folder + " can be undone\n");
  }
  bool hasKept(const std::string& folder) const { return fs::exists(place.path() / folder / ".kivsys"); }
  std::string path(const std::string& file) const { return (place.path() / file).string(); }
};

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

TEST_F(Undo, AKeptFileThatHasChangedRefusesAll) {
  addOld("out/WORK0001.MUS");
  EXPECT_EQ(convert().status, 0);
  const std::string kept = "out/.kivsys/" + filesIn(place.path() / "out/.kivsys").at(0);
  place.write(kept, "changed");
  const Snapshot before = snapshot();
  EXPECT_EQ(place.kivsys({"undo"}).error, "kivsys: the old " + path("out/WORK0001.MUS") + " is no longer in " +
                                              path(kept) + "\nkivsys: nothing is undone\n");
  EXPECT_EQ(snapshot(), before);
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

TEST_F(Undo, ADamagedJournalUndoesNothing) {
  EXPECT_EQ(convert().status, 0);
  const fs::path folder = place.stateFolder() / "kivsys/undo";
  for (const std::string& file : filesIn(folder)) {
    if (file.starts_with("run-")) {
      std::ofstream(folder / file, std::ios::app) << "{\"file\":\"/etc/passwd\",\"before\":\"missing\"}\n";
    }
  }
  const Snapshot before = snapshot();
  const Ended ended = place.kivsys({"undo"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_TRUE(ended.error.ends_with(" cannot be read, or is damaged; nothing is undone\n")) << ended.error;
  EXPECT_EQ(snapshot(), before);
}

}  // namespace
}  // namespace kiv::test
