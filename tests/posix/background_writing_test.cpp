#include "tests/posix/background_writing.h"

#include <csignal>
#include <filesystem>
#include <set>

namespace kiv::test {
namespace {

TEST_F(BackgroundWriting, FilesAreInTheirPlacesWhenTheRunHasFinished) {
  for (int i = 1; i <= 9; ++i) {
    EXPECT_EQ(replace("W" + std::to_string(i), "result " + std::to_string(i)), "");
    EXPECT_EQ(readWhole(system, page()), "the page") << "pages are read meanwhile";
  }
  EXPECT_EQ(finish(), "");
  EXPECT_EQ(disk.entries(), (std::set<std::string>{"P1.MUS", "W1", "W2", "W3", "W4", "W5", "W6", "W7", "W8", "W9"}));
  EXPECT_EQ(disk.file("W9"), "result 9");
  EXPECT_EQ(system.replacedFiles().size(), 9U);
  EXPECT_EQ(system.flushFolders(), std::nullopt);
}

TEST_F(BackgroundWriting, TheFirstReplaceReturnsBeforeTheFileIsThere) {
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_TRUE(system.replacedFiles().empty());
  EXPECT_EQ(finish(), "");
  EXPECT_EQ(system.replacedFiles(), std::vector<std::string>{disk.core("W1")});
}

TEST_F(BackgroundWriting, SeveralFilesAreBesideTheirPlacesWithTheMarkOfTheJournal) {
  journal.awaited = "W1";
  EXPECT_EQ(replace("W0", "before"), "");
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(replace("W2", "two"), "");
  EXPECT_EQ(replace("W3", "three"), "");
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
  while (temporaryFiles() < 2 && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  EXPECT_GE(temporaryFiles(), 2U);
  EXPECT_EQ(disk.file("W2"), "(no file)") << "none overtakes another";
  journal.open();
  EXPECT_EQ(finish(), "");
  EXPECT_EQ(disk.file("W3"), "three");
  EXPECT_EQ(temporaryFiles(), 0U);
}

TEST_F(BackgroundWriting, AReaderSeesTheFilesInOrder) {
  std::atomic<bool> ends = false;
  int gaps = 0;
  std::thread reader([&] {
    while (!ends) {
      int there = 0;
      for (int i = 60; i >= 1; --i) {  // what is there when a later file is, was there before
        const bool isThere = std::filesystem::exists(disk.path("W" + std::to_string(i)));
        gaps += !isThere && there > 0 ? 1 : 0;
        there += isThere ? 1 : 0;
      }
    }
  });
  for (int i = 1; i <= 60; ++i) {
    EXPECT_EQ(replace("W" + std::to_string(i), "result"), "");
  }
  EXPECT_EQ(finish(), "");
  ends = true;
  reader.join();
  EXPECT_EQ(gaps, 0);
}

TEST_F(BackgroundWriting, WhetherTheNextFileIsThereIsKnownWithoutWaiting) {
  disk.addFile("W3", "old");
  journal.awaited = "W1";
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(system.openInput(disk.core("W2")), nullptr);
  EXPECT_EQ(readWhole(system, disk.core("W3")), "old");
  EXPECT_EQ(disk.file("W1"), "(no file)");
  journal.open();
  EXPECT_EQ(finish(), "");
}

TEST_F(BackgroundWriting, ALinkToAFileUnderWayIsReadWhenItIsWritten) {
  std::filesystem::create_symlink("W1", disk.path("W2"));
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(readWhole(system, disk.core("W2")), "one");
}

TEST_F(BackgroundWriting, TheFileThatALinkUnderWayLeadsToIsReadWhenItIsWritten) {
  disk.addFile("W2", "old");
  std::filesystem::create_symlink("W2", disk.path("W1"));
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(readWhole(system, disk.core("W2")), "one");
}

TEST_F(BackgroundWriting, AResultIsReadOnlyWhenItIsWritten) {
  disk.addFile("W1", "old");
  EXPECT_EQ(replace("W1", "new"), "");
  EXPECT_EQ(readWhole(system, disk.core("W1")), "new");
}

TEST_F(BackgroundWriting, OtherChangesWaitForTheFile) {
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(system.replaceFile(disk.core("W2"), "two"), std::nullopt);
  EXPECT_EQ(journal.replaced, (std::vector<std::string>{"W1", "W2"}));
  EXPECT_EQ(replace("W3", "three"), "");
  EXPECT_TRUE(system.deleteFile(disk.core("W3")));
  EXPECT_EQ(replace("W4", "four"), "");
  EXPECT_NE(system.openOutput(disk.core("W5")), nullptr);
  EXPECT_EQ(disk.file("W4"), "four");
}

TEST_F(BackgroundWriting, AnInputIsRefusedAtOnce) {
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(replace("P1.MUS", "two"), "P1.MUS: it is another file of the run");
  EXPECT_EQ(disk.file("P1.MUS"), "the page");
}

TEST_F(BackgroundWriting, ALinkToTheResultBeforeIsRefused) {
  std::filesystem::create_symlink(disk.path("W1"), disk.path("W2"));
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(replace("W2", "two"), "W2: it is another file of the run");
  EXPECT_EQ(disk.file("W1"), "one");
}

TEST_F(BackgroundWriting, ANameInAnotherCaseIsThatOfTheFileUnderWay) {
  EXPECT_EQ(replace("W4", "one"), "");
  EXPECT_EQ(replace("w4", "two"), "");
  EXPECT_EQ(finish(), "");
  EXPECT_EQ(disk.file("W4"), "two");
  EXPECT_EQ(disk.file("w4"), "(no file)");
  EXPECT_EQ(journal.replaced, (std::vector<std::string>{"W4", "W4"}));
}

TEST_F(BackgroundWriting, SignalsWaitUntilTheFileIsInItsPlace) {
  static volatile std::sig_atomic_t caught = 0;
  caught = 0;
  const auto before = std::signal(SIGHUP, [](int /*signal*/) { caught = 1; });
  EXPECT_EQ(replace("W1", "one"), "");
  ::kill(::getpid(), SIGHUP);
  EXPECT_EQ(caught, 0);
  EXPECT_EQ(finish(), "");
  EXPECT_EQ(caught, 1);
  EXPECT_EQ(disk.file("W1"), "one");
  static_cast<void>(std::signal(SIGHUP, before));
}

TEST_F(BackgroundWriting, ASignalIsNoticedAtTheNextFileWhenAllBeforeAreInTheirPlaces) {
  static volatile std::sig_atomic_t caught = 0;
  caught = 0;
  const auto before = std::signal(SIGHUP, [](int /*signal*/) { caught = 1; });
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(replace("W" + std::to_string(i), "result"), "");
  }
  ::kill(::getpid(), SIGHUP);
  EXPECT_EQ(caught, 0);
  EXPECT_EQ(replace("W4", "result"), "");
  EXPECT_EQ(caught, 1);
  EXPECT_EQ(disk.file("W3"), "result");
  EXPECT_EQ(finish(), "");
  static_cast<void>(std::signal(SIGHUP, before));
}

TEST_F(BackgroundWriting, AnAbandonedRunFinishesTheFileUnderWay) {
  {
    ConsoleSystem other;
    other.setJournal(journal);
    other.writeInBackground();
    EXPECT_EQ(other.replaceSoon(disk.core("W1"), std::make_shared<const std::string>("one")), std::nullopt);
  }
  EXPECT_EQ(disk.file("W1"), "one");
}

TEST_F(BackgroundWriting, NothingUsesTheJournalOfAnAbandonedRunAfterItsEnd) {
  auto own = std::make_unique<SlowJournal>();
  {
    ConsoleSystem other;
    other.setJournal(*own);
    other.writeInBackground();
    for (const char* name : {"W1", "W2", "W3"}) {
      EXPECT_EQ(other.replaceSoon(disk.core(name), std::make_shared<const std::string>("a result")), std::nullopt);
    }
    other.endJournal();
    EXPECT_EQ(own->replaced, (std::vector<std::string>{"W1", "W2", "W3"}));
    own.reset();
    EXPECT_EQ(other.replaceSoon(disk.core("W4"), std::make_shared<const std::string>("one more")), std::nullopt);
  }
  EXPECT_EQ(disk.file("W3"), "a result");
  EXPECT_EQ(disk.file("W4"), "one more");
}

TEST(BackgroundWritingLikeThePanel, IsNone) {
  const TemporaryFolder disk;
  ConsoleSystem system(Guard::off);
  system.writeInBackground();
  EXPECT_EQ(system.replaceSoon(disk.core("W1"), std::make_shared<const std::string>("one")), std::nullopt);
  EXPECT_EQ(disk.file("W1"), "one");
}

}  // namespace
}  // namespace kiv::test
