#include "platform/console/console_system.h"

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "messages/run_time_errors.h"
#include "tests/posix/temporary_folder.h"

namespace kiv::test {
namespace {

class ConsoleSystemFiles : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* folder : {"lib", "LIB"}) {
      disk.addFolder(folder);
    }
    disk.addFile("lib/p1.mus", "the page");
    disk.addFile("LIB/P1.MUS", "another");
  }
  std::string upper(const std::string& name) { return system.upperCase(disk.core(name)); }
  FoundFile found(const std::string& name) {
    const std::string path = disk.path(name).string();
    return {disk.core(name), path, stampOf(path)};
  }
  void bindOpened(const std::vector<std::string>& names) {
    std::vector<FoundFile> pages;
    for (const std::string& name : names) {
      pages.push_back(found(name));
    }
    system.bindPages(pages);
    system.countAsOpened(pages);
  }

  TemporaryFolder disk;
  ConsoleSystem system;
};

TEST_F(ConsoleSystemFiles, ABoundPageIsReadWhateverElseHasItsName) {
  const std::string name = upper("lib/p1.mus");
  system.bindPages({{disk.core("lib/p1.mus"), disk.path("lib/p1.mus").string()}});
  EXPECT_EQ(readWhole(system, name), "the page");
  EXPECT_EQ(system.diskName(name), disk.path("lib/p1.mus").string());
  EXPECT_EQ(readWhole(system, disk.core("LIB/P1.MUS")), "another");
}

TEST_F(ConsoleSystemFiles, ABoundPageIsShownByItsOwnPathWhateverElseHasItsName) {
  system.bindPages({{disk.core("lib/p1.mus"), disk.path("lib/p1.mus").string()}});
  EXPECT_EQ(system.shownName(upper("lib/p1.mus")), disk.path("lib/p1.mus").string());
}

TEST_F(ConsoleSystemFiles, ABoundPageThatIsGoneIsNotReadFromAnotherFile) {
  system.bindPages({{disk.core("lib/p1.mus"), disk.path("lib/p1.mus").string()}});
  disk.addFile("lib/P1.MUS", "another");
  std::filesystem::remove(disk.path("lib/p1.mus"));
  EXPECT_EQ(system.openInput(upper("lib/p1.mus")), nullptr);
}

TEST_F(ConsoleSystemFiles, ABoundPageIsLookedForOnTheDisk) {
  system.bindPages({{disk.core("lib/p1.mus"), disk.path("lib/p1.mus").string()}});
  EXPECT_TRUE(system.willOpen(upper("lib/p1.mus"), Fetch::wanted));
  std::filesystem::remove(disk.path("lib/p1.mus"));
  EXPECT_THROW(static_cast<void>(system.willOpen(upper("lib/p1.mus"), Fetch::wanted)), ProgramEnd);
}

TEST_F(ConsoleSystemFiles, PagesThatHaveJustBeenOpenedAreNotLookedForUntilOneIsRead) {
  disk.addFile("lib/p2.mus", "the next page");
  bindOpened({"lib/p1.mus", "lib/p2.mus"});
  std::filesystem::remove(disk.path("lib/p2.mus"));
  EXPECT_TRUE(system.willOpen(upper("lib/p2.mus"), Fetch::wanted));
  EXPECT_FALSE(system.willOpen(upper("lib/p3.mus"), Fetch::wanted)) << "it is not bound";
  EXPECT_EQ(readWhole(system, upper("lib/p1.mus")), "the page");
  EXPECT_THROW(static_cast<void>(system.willOpen(upper("lib/p2.mus"), Fetch::wanted)), ProgramEnd);
}

TEST_F(ConsoleSystemFiles, APageThatChangesAfterItWasOpenedEndsTheRun) {
  bindOpened({"lib/p1.mus"});
  disk.addFile("lib/p1.mus", "another page");
  EXPECT_THROW(static_cast<void>(system.openInput(upper("lib/p1.mus"))), ProgramEnd);
}

TEST_F(ConsoleSystemFiles, APageThatGoesAfterItWasOpenedEndsTheRun) {
  bindOpened({"lib/p1.mus"});
  std::filesystem::remove(disk.path("lib/p1.mus"));
  EXPECT_THROW(static_cast<void>(system.openInput(upper("lib/p1.mus"))), ProgramEnd);
}

TEST_F(ConsoleSystemFiles, PagesOfWhichOneHasChangedDoNotCountAsOpened) {
  const FoundFile page = found("lib/p1.mus");
  system.bindPages({page});
  EXPECT_EQ(readWhole(system, upper("lib/p1.mus")), "the page");
  disk.addFile("lib/p1.mus", "another page");
  system.countAsOpened({found("lib/p1.mus")});
  EXPECT_THROW(static_cast<void>(system.willOpen(upper("lib/p1.mus"), Fetch::wanted)), ProgramEnd);
}

TEST_F(ConsoleSystemFiles, ANewFileGoesBesideTheBoundPageWhenAskedFor) {
  system.bindPages({{disk.core("lib/p1.mus"), disk.path("lib/p1.mus").string()}});
  system.bindFolder();
  EXPECT_EQ(system.replaceFile(upper("lib/") + "NEW", "new"), std::nullopt);
  EXPECT_EQ(disk.file("lib/NEW"), "new");
  EXPECT_EQ(system.replacedFiles(), std::vector<std::string>{upper("lib/") + "NEW"});
  EXPECT_EQ(system.writtenFiles().files(),
            (std::vector<FoundFile>{{upper("lib/") + "NEW", disk.path("lib/NEW").string()}}));
}

TEST_F(ConsoleSystemFiles, TheNamesFileIsInMemoryAndStays) {
  disk.addFile("names.txt", "the user's own");
  system.serveNamesFile(disk.core("names.txt"), "a copy");
  EXPECT_TRUE(system.deleteFile(disk.core("names.txt")));
  EXPECT_EQ(readWhole(system, disk.core("names.txt")), "a copy");
  EXPECT_EQ(disk.file("names.txt"), "the user's own");
}

}  // namespace
}  // namespace kiv::test
