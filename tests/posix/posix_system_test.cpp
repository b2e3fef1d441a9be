#include "platform/posix/posix_system.h"

#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <optional>
#include <string>

#include "tests/posix/posix_disk.h"

namespace kiv::test {
namespace {

using Names = std::set<std::string>;
using PosixFolders = PosixDisk;
using PosixMachine = PosixDisk;

/// While it lives, temporary files go into another folder.
class TemporaryFilesIn {
 public:
  explicit TemporaryFilesIn(const std::string& folder) {
    if (const char* old = std::getenv("TMPDIR")) {
      old_ = old;
    }
    ::setenv("TMPDIR", folder.c_str(), 1);
  }
  TemporaryFilesIn(const TemporaryFilesIn&) = delete;
  TemporaryFilesIn& operator=(const TemporaryFilesIn&) = delete;
  ~TemporaryFilesIn() {
    if (old_) {
      ::setenv("TMPDIR", old_->c_str(), 1);
    } else {
      ::unsetenv("TMPDIR");
    }
  }

 private:
  std::optional<std::string> old_;
};

// --- folders ---

TEST_F(PosixFolders, ListingShowsFilesAndFolders) {
  disk.addFolder("Sub");
  disk.addFile("a.mus");
  Names files;
  Names folders;
  for (const FolderEntry& entry : system.listFolder(disk.core())) {
    (entry.isFolder ? folders : files).insert(entry.name);
  }
  EXPECT_EQ(files, Names{"a.mus"});
  EXPECT_EQ(folders, (Names{".", "..", "Sub"}));
}

TEST_F(PosixFolders, ALinkToAFolderIsAFolder) {
  disk.addFolder("sub");
  std::filesystem::create_directory_symlink("../sub", disk.path("sub/link"));
  for (const FolderEntry& entry : system.listFolder(disk.core("SUB\\"))) {
    EXPECT_TRUE(entry.isFolder) << entry.name;
  }
}

TEST_F(PosixFolders, WhatIsNoFolderListsNothing) {
  disk.addFile("a.mus");
  EXPECT_TRUE(system.listFolder(disk.core("missing\\")).empty());
  EXPECT_TRUE(system.listFolder(disk.core("a.mus\\")).empty());
}

TEST_F(PosixFolders, TheCurrentFolderHasBackslashesAndNoneAtItsEnd) {
  disk.addFolder("Sub ä");
  ASSERT_TRUE(system.enterFolder(disk.path("Sub ä").string()));
  EXPECT_EQ(system.currentFolder(), disk.core("Sub ä"));
  ASSERT_TRUE(system.enterFolder("/"));
  EXPECT_EQ(system.currentFolder(), "\\");
}

TEST_F(PosixFolders, WhatIsNoFolderIsNotEntered) {
  disk.addFile("a.mus");
  ASSERT_TRUE(system.enterFolder(disk.path().string()));
  EXPECT_FALSE(system.enterFolder("missing"));
  EXPECT_FALSE(system.enterFolder("a.mus"));
  EXPECT_EQ(system.currentFolder() + "\\", disk.core());
}

// --- temporary files, text, time and programs ---

TEST_F(PosixMachine, TemporaryFilesHoldTheirContent) {
  const TemporaryFilesIn folder(disk.path().string());
  const std::string one = system.makeTemporaryFile("C:\\S\\A.MUS 1\r\n");
  const std::string two = system.makeTemporaryFile("");
  EXPECT_EQ(one.rfind(disk.core("kivsys-"), 0), 0U) << one;
  EXPECT_NE(one, two);
  EXPECT_EQ(readWhole(system, one), "C:\\S\\A.MUS 1\r\n");
  EXPECT_EQ(readWhole(system, two), "");
  EXPECT_EQ(disk.entries().size(), 2U);
}

TEST_F(PosixMachine, ATemporaryFileThatCannotBeCreatedHasNoName) {
  const TemporaryFilesIn missing(disk.path("missing").string());
  EXPECT_EQ(system.makeTemporaryFile("text"), "");
}

TEST_F(PosixMachine, ATemporaryFileThatDoesNotFitOnTheDiskIsRemoved) {
  const TemporaryFilesIn folder(disk.path().string());
  const FullDisk full(2);
  EXPECT_EQ(system.makeTemporaryFile("text"), "");
  EXPECT_EQ(disk.entries(), Names{});
}

TEST_F(PosixMachine, TextIsUtf8) {
  EXPECT_EQ(system.upperCase("é ß ÿ µ \xE4"), "É ß Ÿ µ \xE4");
  EXPECT_EQ(system.characterCount("é ß"), 3U);
}

TEST_F(PosixMachine, TheTimeIsTheLocalOne) {
  const std::time_t before = std::time(nullptr);
  const LocalTime now = system.now();
  std::tm parts{};
  parts.tm_year = now.year - 1900;
  parts.tm_mon = now.month - 1;
  parts.tm_mday = now.day;
  parts.tm_hour = now.hour;
  parts.tm_min = now.minute;
  parts.tm_sec = now.second;
  parts.tm_isdst = -1;
  const std::time_t shown = std::mktime(&parts);
  EXPECT_GE(shown, before);
  EXPECT_LE(shown, std::time(nullptr));
}

TEST_F(PosixMachine, WhatOnlyWindowsHasIsAbsent) {
  EXPECT_EQ(system.shortName(disk.core("a.mus")), std::nullopt);
  EXPECT_EQ(system.profileKey("OS"), "");
  EXPECT_EQ(system.runProcess("Notepad N.TXT", ShowState::leftToTheSystem), -1);
  EXPECT_EQ(system.runInShell("TOOL.EXE", WindowStyle::normal),
            (ShellFailure{429, "The scripting shell is not available"}));
}

}  // namespace
}  // namespace kiv::test
