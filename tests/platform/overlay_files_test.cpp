#include "platform/memory/overlay_files.h"

#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/silent_user.h"
#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;

std::string contentOf(Files& files, const std::string& name) {
  return readWhole(files, name).value_or("(no file)");
}

// --- over other files ---

class Overlay : public ::testing::Test {
 protected:
  Overlay() {
    disk.addFile("OLD.TXT", "old");
    disk.folderEntries = {{".", true}};
  }
  std::string content(const std::string& name) { return contentOf(overlay, name); }

  FakeHost disk;
  OverlayFiles overlay{disk, disk};
};

TEST_F(Overlay, ReadsTheFilesBelow) {
  EXPECT_EQ(content("OLD.TXT"), "old");
  EXPECT_EQ(content("NONE.TXT"), "(no file)");
  EXPECT_EQ(overlay.find("OLD.TXT"), nullptr) << "it is not kept here";
}

TEST_F(Overlay, WhatIsWrittenIsReadBackAndNothingBelowChanges) {
  EXPECT_EQ(overlay.openOutput("OLD.TXT")->write("new"), std::nullopt);
  EXPECT_EQ(overlay.openOutput("NEW.TXT")->write("here"), std::nullopt);
  EXPECT_EQ(content("OLD.TXT"), "new");
  EXPECT_EQ(content("new.txt"), "here") << "names are compared regardless of case";
  EXPECT_EQ(content("C:\\KIV\\NEW.TXT"), "here");
  EXPECT_EQ(disk.file("OLD.TXT"), "old");
  EXPECT_FALSE(disk.hasFile("NEW.TXT"));
}

TEST_F(Overlay, WhatIsDeletedIsGoneHereOnly) {
  EXPECT_TRUE(overlay.deleteFile("OLD.TXT"));
  EXPECT_FALSE(overlay.deleteFile("OLD.TXT"));
  EXPECT_EQ(content("OLD.TXT"), "(no file)");
  EXPECT_EQ(disk.file("OLD.TXT"), "old");
  EXPECT_THAT(disk.calls, ElementsAre());
}

TEST_F(Overlay, KnowsWhatWillOpenHereAndBelow) {
  EXPECT_EQ(overlay.openOutput("NEW.TXT")->write("here"), std::nullopt);
  EXPECT_TRUE(overlay.willOpen("OLD.TXT", Fetch::notWanted));
  EXPECT_TRUE(overlay.willOpen("NEW.TXT", Fetch::notWanted));
  EXPECT_FALSE(overlay.willOpen("NONE.TXT", Fetch::notWanted));
  EXPECT_TRUE(overlay.deleteFile("OLD.TXT"));
  EXPECT_FALSE(overlay.willOpen("OLD.TXT", Fetch::notWanted));
}

TEST_F(Overlay, ReplacedFilesAreListedOnceWithWhatWasThere) {
  EXPECT_EQ(overlay.replaceFile("C:\\R\\NEW.MUS", "1"), std::nullopt);
  EXPECT_EQ(overlay.replaceFile("C:\\KIV\\OLD.TXT", "2"), std::nullopt);
  EXPECT_EQ(overlay.replaceFile("c:\\r\\new.mus", "3"), std::nullopt);
  EXPECT_THAT(overlay.replaced(), ElementsAre(OverlayFiles::Replaced{"C:\\R\\NEW.MUS", false},
                                              OverlayFiles::Replaced{"C:\\KIV\\OLD.TXT", true}));
  EXPECT_EQ(content("C:\\R\\NEW.MUS"), "3");
  EXPECT_EQ(disk.file("OLD.TXT"), "old");
}

TEST_F(Overlay, NoFileIsPutInAFolderThatIsNotThere) {
  disk.folderEntries.clear();
  EXPECT_EQ(overlay.replaceFile("C:\\R\\NEW.MUS", "1"), "The folder does not exist");
  EXPECT_TRUE(overlay.replaced().empty());
  EXPECT_EQ(content("C:\\R\\NEW.MUS"), "(no file)");
}

TEST_F(Overlay, AsksForAFolderOnce) {
  for (const char* name : {"C:\\R\\A.MUS", "C:\\R\\B.MUS", "c:\\r\\C.MUS"}) {
    EXPECT_EQ(overlay.replaceFile(name, "1"), std::nullopt);
  }
  EXPECT_THAT(disk.calls, ElementsAre("list C:\\R\\"));
}

TEST_F(Overlay, FoldersAndShortNamesAreThoseBelow) {
  disk.shortNames["C:\\M\\Long name.mus"] = "C:\\M\\LONGNA~1.MUS";
  disk.folder = "D:\\WORK";
  EXPECT_EQ(overlay.listFolder("C:\\R\\").size(), 1U);
  EXPECT_EQ(overlay.shortName("C:\\M\\Long name.mus"), "C:\\M\\LONGNA~1.MUS");
  EXPECT_EQ(overlay.currentFolder(), "D:\\WORK");
  overlay.addFile("X.TXT", "here");
  EXPECT_EQ(content("D:\\WORK\\X.TXT"), "here");
}

TEST_F(Overlay, WhatIsKeptHereIsForgottenWhenItIsCleared) {
  EXPECT_EQ(overlay.replaceFile("OLD.TXT", "new"), std::nullopt);
  overlay.addFile("NEW.TXT", "here");
  overlay.clear();
  EXPECT_EQ(content("OLD.TXT"), "old");
  EXPECT_EQ(content("NEW.TXT"), "(no file)");
  EXPECT_TRUE(overlay.replaced().empty());
  EXPECT_THAT(overlay.names(), ElementsAre());
}

/// A disk on which names differ by case.
class CaseSensitiveDisk : public FakeHost {
 public:
  std::unique_ptr<InputFile> openInput(const std::string& name) override {
    return name == "C:\\M\\Page1.mus" ? FakeHost::openInput(name) : nullptr;
  }
};

TEST(OverlayAlias, MakesAFileBelowReadableInAnyCase) {
  CaseSensitiveDisk disk;
  disk.addFile("C:\\M\\Page1.mus", "page");
  disk.folderEntries = {{".", true}};
  OverlayFiles overlay(disk, disk);
  EXPECT_EQ(contentOf(overlay, "C:\\M\\PAGE1.MUS"), "(no file)");
  overlay.addAlias("C:\\M\\Page1.mus");
  EXPECT_EQ(contentOf(overlay, "C:\\M\\PAGE1.MUS"), "page");
  EXPECT_EQ(overlay.replaceFile("C:\\M\\PAGE1.MUS", "new"), std::nullopt);
  EXPECT_EQ(contentOf(overlay, "C:\\M\\Page1.mus"), "new") << "what is kept here goes first";
}

// --- over nothing ---

class FilesInMemory : public ::testing::Test {
 protected:
  std::string content(const std::string& name) { return contentOf(files, name); }

  FakeHost machine;
  OverlayFiles files{"C:\\WORK", machine};
};

TEST_F(FilesInMemory, HoldWhatWasAdded) {
  files.addFile("A.TXT", "one");
  files.addFile("D:\\B.TXT", "two");
  EXPECT_EQ(content("c:\\work\\a.txt"), "one");
  EXPECT_EQ(content("d:\\b.txt"), "two");
  EXPECT_EQ(content("B.TXT"), "(no file)");
  EXPECT_THAT(files.names(), ElementsAre("C:\\WORK\\A.TXT", "D:\\B.TXT"));
  ASSERT_NE(files.find("a.txt"), nullptr);
  EXPECT_EQ(*files.find("a.txt"), "one");
  EXPECT_EQ(files.find("B.TXT"), nullptr);
}

TEST_F(FilesInMemory, HaveEveryFolder) {
  EXPECT_EQ(files.replaceFile("X:\\ANY\\A.TXT", "one"), std::nullopt);
  EXPECT_EQ(content("X:\\ANY\\A.TXT"), "one");
}

TEST_F(FilesInMemory, DoNotListADeletedFile) {
  files.addFile("A.TXT", "one");
  EXPECT_TRUE(files.deleteFile("a.txt"));
  EXPECT_THAT(files.names(), ElementsAre());
  EXPECT_EQ(files.find("A.TXT"), nullptr);
  EXPECT_FALSE(files.deleteFile("NEVER.TXT"));
}

TEST_F(FilesInMemory, ListNoFolderAndKnowNoShortName) {
  files.addFile("A.TXT", "one");
  EXPECT_TRUE(files.listFolder("C:\\WORK\\").empty());
  EXPECT_EQ(files.shortName("C:\\WORK\\A.TXT"), std::nullopt);
  EXPECT_EQ(files.currentFolder(), "C:\\WORK");
}

TEST_F(FilesInMemory, AreReadAsTheyWereWhenTheyWereOpened) {
  files.addFile("A.TXT", "one");
  const auto input = files.openInput("A.TXT");
  EXPECT_EQ(files.replaceFile("A.TXT", "two"), std::nullopt);
  EXPECT_TRUE(files.deleteFile("A.TXT"));
  char buffer[10] = {};
  EXPECT_EQ(input->read(buffer), 3U);
  EXPECT_EQ(std::string(buffer), "one");
  EXPECT_EQ(input->read(buffer), 0U);
}

TEST_F(FilesInMemory, AreWrittenFromTheirBeginningAndPieceByPiece) {
  files.addFile("A.TXT", "an old text");
  const auto output = files.openOutput("A.TXT");
  EXPECT_EQ(content("A.TXT"), "");
  EXPECT_EQ(output->write("ab"), std::nullopt);
  EXPECT_EQ(content("A.TXT"), "ab") << "at once";
  EXPECT_EQ(output->write("c"), std::nullopt);
  EXPECT_EQ(content("A.TXT"), "abc");
}

TEST(FilesInARootFolder, NeedNoSecondBackslash) {
  FakeHost machine;
  OverlayFiles files("C:\\", machine);
  files.addFile("A.TXT", "one");
  EXPECT_THAT(files.names(), ElementsAre("C:\\A.TXT"));
}

// --- what goes with them ---

TEST(SilentUser, KeepsMessagesAndAnswersNo) {
  SilentUser user;
  const kiv::Message note{code::other, Icon::information, Buttons::ok, "Note.", {}, {}};
  const kiv::Message question{code::other, Icon::exclamation, Buttons::yesNo, "Go on?", {}, {}};
  EXPECT_EQ(user.show(note), Answer::ok);
  EXPECT_EQ(user.show(question), Answer::no);
  EXPECT_THAT(user.messages(), ElementsAre(note, question));
  EXPECT_TRUE(user.showText("X.TXT")) << "no viewer is to be started";
}

TEST(NoPrograms, StartsNothingSuccessfully) {
  NoPrograms programs;
  EXPECT_EQ(programs.runProcess("Notepad X", ShowState::leftToTheSystem), 0);
  EXPECT_EQ(programs.runInShell("X", WindowStyle::normal), std::nullopt);
}

}  // namespace
}  // namespace kiv::test
