#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "tests/console/undo_fixture.h"

namespace kiv::test {
namespace {

TEST_F(Undo, ARunThatFailsBeforeItChangesAnythingLeavesTheUndoOfTheOneBefore) {
  const Snapshot before = snapshot();
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "x2.mus", "--map", "101=7", "--in-place"}).status, 0);
  fs::create_directory(place.path() / "X1.PAG");
  EXPECT_EQ(place.kivsys({"sort", "x1.mus"}).status, 1);
  fs::remove(place.path() / "X1.PAG");
  expectUndone(before);
}

TEST_F(Undo, OldFilesOfAFolderThatTheJournalLostRefuseAll) {
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "x2.mus", "--map", "102=7", "--in-place"}).status, 0);
  cutJournal(1, "{\"folder\":");
  const Snapshot before = snapshot();
  const Ended ended = place.kivsys({"undo"});
  EXPECT_EQ(ended.status, 2) << ended.out;
  EXPECT_NE(ended.error.find(" is an old file that the journal does not know: the journal is damaged\n"),
            std::string::npos)
      << ended.error;
  EXPECT_EQ(snapshot(), before);
}

TEST_F(Undo, OldFilesThatACutJournalDoesNotKnowRefuseAll) {
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "x2.mus", "--map", "102=7", "--in-place"}).status, 0);
  cutJournal(2, "");
  const Snapshot before = snapshot();
  const Ended ended = place.kivsys({"undo"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_NE(ended.error.find(" is an old file that the journal does not know: the journal is damaged\n"),
            std::string::npos)
      << ended.error;
  EXPECT_EQ(snapshot(), before);
}

TEST_F(Undo, ADamagedJournalUndoesNothing) {
  addOld("KivSystem2.TXT");
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
  EXPECT_TRUE(
      ended.error.ends_with(" cannot be read, or is damaged; nothing is undone\n"
                            "kivsys: files that runs have replaced here are in " +
                            path(".kivsys") + "\n"))
      << ended.error;
  EXPECT_EQ(snapshot(), before);
}

}  // namespace
}  // namespace kiv::test
