#include <atomic>
#include <filesystem>
#include <future>
#include <set>
#include <string>

#include "tests/posix/posix_disk.h"

namespace kiv::test {
namespace {

using namespace std::string_literals;
using Names = std::set<std::string>;
using PosixReplace = PosixDisk;

TEST_F(PosixReplace, MakesANewFile) {
  EXPECT_EQ(system.replaceFile(disk.core("WORK0001.MUS"), "page\0"s), std::nullopt);
  EXPECT_EQ(disk.entries(), Names{"WORK0001.MUS"});
  EXPECT_EQ(disk.file("WORK0001.MUS"), "page\0"s);
}

TEST_F(PosixReplace, ReplacesTheOldOneUnderItsSpelling) {
  disk.addFile("Work0001.mus", "a long old page");
  EXPECT_EQ(system.replaceFile(disk.core("WORK0001.MUS"), "new"), std::nullopt);
  EXPECT_EQ(disk.entries(), Names{"Work0001.mus"});
  EXPECT_EQ(disk.file("Work0001.mus"), "new");
}

TEST_F(PosixReplace, ANewFileMayBeEmpty) {
  disk.addFile("a.mus", "old");
  EXPECT_EQ(system.replaceFile(disk.core("a.mus"), ""), std::nullopt);
  EXPECT_EQ(disk.file("a.mus"), "");
}

TEST_F(PosixReplace, TheModeIsKept) {
  for (const mode_t mode : {0600U, 0640U, 0666U, 0755U}) {
    disk.addFile("a.mus", "old");
    setMode("a.mus", mode);
    EXPECT_EQ(system.replaceFile(disk.core("a.mus"), "new"), std::nullopt);
    EXPECT_EQ(modeOf("a.mus"), mode);
  }
}

TEST_F(PosixReplace, ANewFileHasTheModeThatTheUserWantedWhenTheProcessBegan) {
  const mode_t before = ::umask(027);
  PosixSystem::prepareProcess();
  ::umask(before);
  EXPECT_EQ(system.replaceFile(disk.core("a.mus"), "new"), std::nullopt);
  PosixSystem::prepareProcess();
  EXPECT_EQ(modeOf("a.mus"), 0640U);
}

TEST_F(PosixReplace, ALinkStaysAndTheFileThatItLeadsToIsReplaced) {
  disk.addFile("real.mus", "old");
  std::filesystem::create_symlink("real.mus", disk.path("link.mus"));
  EXPECT_EQ(system.replaceFile(disk.core("link.mus"), "new"), std::nullopt);
  EXPECT_EQ(disk.file("real.mus"), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(disk.path("link.mus")));
}

TEST_F(PosixReplace, ALinkStaysAndTheFileThatItNamesIsCreated) {
  std::filesystem::create_symlink("second.mus", disk.path("first.mus"));
  std::filesystem::create_symlink("new.mus", disk.path("second.mus"));
  EXPECT_EQ(system.replaceFile(disk.core("first.mus"), "page"), std::nullopt);
  EXPECT_EQ(disk.entries(), (Names{"first.mus", "second.mus", "new.mus"}));
  EXPECT_EQ(disk.file("new.mus"), "page");
  EXPECT_TRUE(std::filesystem::is_symlink(disk.path("first.mus")));
  EXPECT_FALSE(std::filesystem::is_symlink(disk.path("new.mus")));
}

TEST_F(PosixReplace, ALinkIntoAMissingFolderIsReplaced) {
  std::filesystem::create_symlink("no-folder/new.mus", disk.path("a.mus"));
  EXPECT_EQ(system.replaceFile(disk.core("a.mus"), "page"), std::nullopt);
  EXPECT_EQ(disk.file("a.mus"), "page");
}

TEST_F(PosixReplace, AReaderOfTheOldFileKeepsReadingIt) {
  disk.addFile("a.mus", "the old page");
  const auto open = system.openInput(disk.core("a.mus"));
  ASSERT_NE(open, nullptr);
  EXPECT_EQ(system.replaceFile(disk.core("a.mus"), "new"), std::nullopt);
  std::string buffer(100, ' ');
  const auto got = open->read(buffer);
  EXPECT_EQ(buffer.substr(0, got.value_or(0)), "the old page");
}

TEST_F(PosixReplace, AtEveryMomentTheOldOrTheNewFileIsThereWhole) {
  const std::string pages[] = {std::string(50'000, 'a'), std::string(70'000, 'b')};
  disk.addFile("a.mus", pages[0]);
  std::atomic<bool> done = false;
  auto writing = std::async(std::launch::async, [&] {
    PosixSystem writer;
    for (int i = 1; i <= 200; ++i) {
      EXPECT_EQ(writer.replaceFile(disk.core("a.mus"), pages[i % 2]), std::nullopt);
    }
    done = true;
  });
  do {
    const std::string page = read("a.mus");
    EXPECT_TRUE(page == pages[0] || page == pages[1]) << page.substr(0, 9) << ", " << page.size() << " bytes";
  } while (!done && !HasFailure());
}

TEST_F(PosixReplace, TheLongestNamesWork) {
  const std::string name(255, 'n');
  EXPECT_EQ(system.replaceFile(disk.core(name), "one"), std::nullopt);
  EXPECT_EQ(system.replaceFile(disk.core(name), "two"), std::nullopt);
  EXPECT_EQ(disk.file(name), "two");
  EXPECT_EQ(disk.entries(), Names{name});
}

TEST_F(PosixReplace, AFolderWithTheNameOfTheFileIsReportedAndStays) {
  disk.addFolder("sub");
  EXPECT_EQ(system.replaceFile(disk.core("sub"), "new"), "Is a directory");
  EXPECT_NE(system.replaceFile(disk.core("sub\\"), "new"), std::nullopt);
  EXPECT_EQ(disk.entries(), Names{"sub"});
  EXPECT_TRUE(std::filesystem::is_empty(disk.path("sub")));
}

TEST_F(PosixReplace, AMissingFolderIsReported) {
  EXPECT_EQ(system.replaceFile(disk.core("missing\\a.mus"), "new"), "No such file or directory");
  EXPECT_EQ(disk.entries(), Names{});
}

TEST_F(PosixReplace, AnUnwritableFolderIsReportedAndTheOldFileStays) {
  disk.addFolder("sub");
  disk.addFile("sub/a.mus", "old");
  setMode("sub", 0555);
  {
    const OrdinaryUser user;
    EXPECT_EQ(system.replaceFile(disk.core("sub\\a.mus"), "new"), "Permission denied");
  }
  EXPECT_EQ(disk.file("sub/a.mus"), "old");
}

TEST_F(PosixReplace, AFullDiskIsReportedAndTheOldFileStays) {
  disk.addFile("a.mus", "the old page");
  {
    const FullDisk full(4);
    EXPECT_EQ(system.replaceFile(disk.core("A.MUS"), "the new page"), "File too large");
    EXPECT_EQ(system.replaceFile(disk.core("b.mus"), "another page"), "File too large");
  }
  EXPECT_EQ(disk.entries(), Names{"a.mus"});
  EXPECT_EQ(disk.file("a.mus"), "the old page");
}

}  // namespace
}  // namespace kiv::test
