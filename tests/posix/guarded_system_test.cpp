#include "platform/console/guarded_system.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "messages/message.h"
#include "tests/posix/posix_disk.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

class ConsoleFiles : public PosixDisk {
 protected:
  /// Writes a file of the run's own; false when it cannot be.
  bool writeOwn(const std::string& text) {
    const auto file = console.openOutput(report());
    return file != nullptr && file->write(text) == std::nullopt;
  }
  std::string report() const { return disk.core("KivSystem2.TXT"); }
  std::string readOwn() { return readWhole(console, disk.core("kivsystem2.txt")).value_or("(no file)"); }

  GuardedSystem console;
};

TEST_F(ConsoleFiles, WhatTheRunHasWrittenIsReadBack) {
  EXPECT_TRUE(writeOwn("SYSTEM=1\r\n"));
  EXPECT_EQ(readOwn(), "SYSTEM=1\r\n");
}

TEST_F(ConsoleFiles, AReportThatAnotherProgramHasChangedEndsTheProgram) {
  for (const std::string other : {"SYSTEM=2\r\n", "SYSTEM=1\r\nSYSTEM=2\r\n", "SYSTEM=1", ""}) {
    EXPECT_TRUE(writeOwn("SYSTEM=1\r\n"));
    disk.addFile("KivSystem2.TXT", other);
    try {
      readOwn();
      FAIL() << other;
    } catch (const ProgramEnd& end) {
      EXPECT_EQ(end.exitCode, 1);
      EXPECT_EQ(end.message.value_or(kiv::Message{}).text, "Changed by another program: " + report());
    }
  }
}

TEST_F(ConsoleFiles, WithoutTheGuardItIsReadAsItIs) {
  GuardedSystem panel(Guard::off);
  EXPECT_NE(panel.openOutput(report()), nullptr);
  disk.addFile("KivSystem2.TXT", "theirs");
  EXPECT_EQ(readWhole(panel, report()), "theirs");
}

TEST_F(ConsoleFiles, AnOwnFileNeverFollowsALink) {
  disk.addFile("precious", "precious");
  fs::create_symlink("precious", disk.path("KivSystem2.TXT"));
  EXPECT_TRUE(writeOwn("new"));
  EXPECT_EQ(disk.file("precious"), "precious");
  EXPECT_FALSE(fs::is_symlink(disk.path("KivSystem2.TXT")));
  EXPECT_EQ(disk.file("KivSystem2.TXT"), "new");
}

TEST_F(ConsoleFiles, AnOwnFileLeavesOtherNamesOfTheOldOneAlone) {
  disk.addFile("precious", "precious");
  fs::create_hard_link(disk.path("precious"), disk.path("KivSystem2.TXT"));
  EXPECT_TRUE(writeOwn("new"));
  EXPECT_EQ(disk.file("precious"), "precious");
}

TEST_F(ConsoleFiles, AnOwnFileNeverWaitsOnAPipe) {
  ASSERT_EQ(::mkfifo(disk.path("KivSystem2.TXT").c_str(), 0600), 0);
  EXPECT_TRUE(writeOwn("new"));
  EXPECT_EQ(disk.file("KivSystem2.TXT"), "new");
}

TEST_F(ConsoleFiles, AnOwnFileIsNoFolder) {
  disk.addFolder("KivSystem2.TXT");
  EXPECT_FALSE(writeOwn("new"));
}

TEST_F(ConsoleFiles, AReplacedFileNeverRunsAsItsOwnerOrGroup) {
  disk.addFile("a.mus", "old");
  setMode("a.mus", 06755);
  EXPECT_EQ(console.replaceFile(disk.core("a.mus"), "new"), std::nullopt);
  EXPECT_EQ(modeOf("a.mus"), 0755U);
}

TEST_F(ConsoleFiles, AReplacedFileKeepsItsOwnerWhereThatIsAllowed) {
  constexpr uid_t somebody = 12345;
  disk.addFile("a.mus", "old");
  if (::chown(disk.path("a.mus").c_str(), somebody, somebody) != 0) {
    GTEST_SKIP() << "only an administrator may give files away";
  }
  EXPECT_EQ(console.replaceFile(disk.core("a.mus"), "new"), std::nullopt);
  struct stat status {};
  ASSERT_EQ(::stat(disk.path("a.mus").c_str(), &status), 0);
  EXPECT_EQ(status.st_uid, somebody);
  EXPECT_EQ(status.st_gid, somebody);
}

TEST_F(ConsoleFiles, FoldersOfReplacedFilesAreFlushed) {
  EXPECT_EQ(console.flushFolders(), std::nullopt);
  disk.addFolder("sub");
  EXPECT_EQ(console.replaceFile(disk.core("sub\\a.mus"), "new"), std::nullopt);
  EXPECT_EQ(console.flushFolders(), std::nullopt);
  EXPECT_EQ(console.replaceFile(disk.core("sub\\a.mus"), "new"), std::nullopt);
  fs::remove_all(disk.path("sub"));
  EXPECT_NE(console.flushFolders(), std::nullopt) << "a folder that is gone";
}

}  // namespace
}  // namespace kiv::test
