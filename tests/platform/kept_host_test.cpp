#include "platform/memory/kept_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;

class Kept : public ::testing::Test {
 protected:
  Kept() {
    world.addFile("OLD.TXT", "old");
    world.folderEntries = {{".", true}};
  }
  std::string content(const std::string& name) { return readWhole(kept, name).value_or("(no file)"); }

  FakeHost world;
  KeptHost kept{world};
};

TEST_F(Kept, ReadsTheWorldThrough) {
  EXPECT_EQ(content("OLD.TXT"), "old");
  EXPECT_EQ(content("NONE.TXT"), "(no file)");
}

TEST_F(Kept, WhatIsWrittenIsReadBackAndNothingOutsideChanges) {
  EXPECT_EQ(kept.openOutput("OLD.TXT")->write("new"), std::nullopt);
  EXPECT_EQ(kept.openOutput("NEW.TXT")->write("here"), std::nullopt);
  EXPECT_EQ(content("OLD.TXT"), "new");
  EXPECT_EQ(content("new.txt"), "here") << "names know no case";
  EXPECT_EQ(content("C:\\KIV\\NEW.TXT"), "here");
  EXPECT_EQ(world.file("OLD.TXT"), "old");
  EXPECT_FALSE(world.hasFile("NEW.TXT"));
}

TEST_F(Kept, WhatIsDeletedIsGoneInHereOnly) {
  EXPECT_TRUE(kept.deleteFile("OLD.TXT"));
  EXPECT_FALSE(kept.deleteFile("OLD.TXT"));
  EXPECT_EQ(content("OLD.TXT"), "(no file)");
  EXPECT_EQ(world.file("OLD.TXT"), "old");
  EXPECT_THAT(world.calls, ElementsAre());
}

TEST_F(Kept, ReplacedFilesAreListedOnceWithWhatWasThere) {
  EXPECT_EQ(kept.replaceFile("C:\\R\\NEW.MUS", "1"), std::nullopt);
  EXPECT_EQ(kept.replaceFile("C:\\KIV\\OLD.TXT", "2"), std::nullopt);
  EXPECT_EQ(kept.replaceFile("C:\\R\\NEW.MUS", "3"), std::nullopt);
  EXPECT_THAT(kept.replaced(),
              ElementsAre(KeptHost::Replaced{"C:\\R\\NEW.MUS", false}, KeptHost::Replaced{"C:\\KIV\\OLD.TXT", true}));
  EXPECT_EQ(content("C:\\R\\NEW.MUS"), "3");
  EXPECT_EQ(world.file("OLD.TXT"), "old");
}

TEST_F(Kept, NoFileIsPutInAFolderThatIsNotThere) {
  world.folderEntries.clear();
  EXPECT_NE(kept.replaceFile("C:\\R\\NEW.MUS", "1"), std::nullopt);
  EXPECT_TRUE(kept.replaced().empty());
}

TEST_F(Kept, NoProgramIsStarted) {
  kept.runProcess("Notepad X", ShowState::leftToTheSystem);
  EXPECT_EQ(kept.runInShell("X", WindowStyle::normal), std::nullopt);
  EXPECT_THAT(world.calls, ElementsAre());
}

}  // namespace
}  // namespace kiv::test
