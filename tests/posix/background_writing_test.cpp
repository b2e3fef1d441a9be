#include <chrono>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/console/console_system.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

/// Lists what it is notified of, and refuses a file. What it does takes some time, as on a slow disk.
class SlowJournal : public ChangeJournal {
 public:
  std::string refused;
  std::vector<std::string> replaced;

  std::optional<std::string> beforeFolder(const std::string& /*path*/) override { return std::nullopt; }
  std::optional<std::string> beforeReplace(const std::string& path, const std::string& /*target*/,
                                           std::string_view /*bytes*/) override {
    std::this_thread::sleep_for(std::chrono::milliseconds(5));
    replaced.push_back(path.substr(path.rfind('/') + 1));
    return replaced.back() == refused ? std::optional<std::string>("no space") : std::nullopt;
  }
  std::optional<std::string> beforeOpen(const std::string& /*path*/) override { return std::nullopt; }
  std::optional<std::string> beforeDelete(const std::string& /*path*/) override { return std::nullopt; }
  void afterWrite(const std::string& /*path*/, Sha256 /*written*/) noexcept override {}
};

/// A run that writes results while it reads pages.
class BackgroundWriting : public testing::Test {
 protected:
  BackgroundWriting() {
    disk.addFile("P1.MUS", "the page");
    system.bindPages({{disk.core("P1.MUS"), disk.path("P1.MUS").string()}});
    system.setJournal(journal);
    system.writeInBackground();
  }
  std::string page() { return system.upperCase(disk.core("P1.MUS")); }
  /// The names of the files that fail, in order.
  std::string replace(const std::string& name, const std::string& content) {
    const auto failure = system.replaceSoon(disk.core(name), content);
    return failure ? failure->name.substr(failure->name.rfind('\\') + 1) + ": " + failure->reason : "";
  }
  std::string finish() {
    const auto failure = system.finishReplacing();
    return failure ? failure->name.substr(failure->name.rfind('\\') + 1) + ": " + failure->reason : "";
  }

  TemporaryFolder disk;
  SlowJournal journal;
  ConsoleSystem system;
};

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

TEST_F(BackgroundWriting, AFailureIsReturnedByTheNextCallAndNothingIsWrittenOfTheNextFile) {
  journal.refused = "W2";
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(replace("W2", "two"), "");
  EXPECT_EQ(replace("W3", "three"), "W2: no space");
  EXPECT_EQ(finish(), "");
  EXPECT_EQ(disk.entries(), (std::set<std::string>{"P1.MUS", "W1"}));
  EXPECT_EQ(journal.replaced, (std::vector<std::string>{"W1", "W2"})) << "nor is it in the journal";
  EXPECT_EQ(system.replacedFiles(), std::vector<std::string>{disk.core("W1")});
  EXPECT_EQ(system.writeFailure(), disk.path().string() + ": no space");
}

TEST_F(BackgroundWriting, TheFailureOfTheLastFileIsReturnedAtTheEnd) {
  journal.refused = "W1";
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(finish(), "W1: no space");
  EXPECT_EQ(finish(), "") << "once";
}

TEST_F(BackgroundWriting, AFailureThatAReadHasWaitedForIsStillReturned) {
  journal.refused = "W1";
  EXPECT_EQ(replace("W1", "one"), "");
  EXPECT_EQ(readWhole(system, disk.core("W1")), std::nullopt);
  EXPECT_EQ(replace("W2", "two"), "W1: no space");
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

TEST_F(BackgroundWriting, AnAbandonedRunFinishesTheFileUnderWay) {
  {
    ConsoleSystem other;
    other.setJournal(journal);
    other.writeInBackground();
    EXPECT_EQ(other.replaceSoon(disk.core("W1"), "one"), std::nullopt);
  }
  EXPECT_EQ(disk.file("W1"), "one");
}

TEST(BackgroundWritingLikeThePanel, IsNone) {
  const TemporaryFolder disk;
  ConsoleSystem system(Guard::off);
  system.writeInBackground();
  EXPECT_EQ(system.replaceSoon(disk.core("W1"), "one"), std::nullopt);
  EXPECT_EQ(disk.file("W1"), "one");
}

}  // namespace
}  // namespace kiv::test
