#include "platform/win32/win32_files.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "input/files.h"
#include "platform/win32/handle.h"
#include "platform/win32/text.h"
#include "tests/window/system_host.h"
#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

using Names = std::vector<std::string>;

class Win32Files : public ::testing::Test {
 protected:
  WorkFolder folder;
  SystemHost host;
};

TEST_F(Win32Files, FileIsReadAsItIs) {
  const std::string bytes("a\r\nb\n\0\x1A\xE4", 8);
  writeFile("X.MUS", bytes);
  EXPECT_EQ(readWhole(host, "X.MUS"), bytes);
  EXPECT_EQ(readWhole(host, folder / "x.mus"), bytes);
}

TEST_F(Win32Files, LargeFileIsReadWhole) {
  std::string bytes(1'000'003, 'x');
  bytes.back() = 'y';
  writeFile("X.MUS", bytes);
  EXPECT_TRUE(readWhole(host, "X.MUS") == bytes);
}

TEST_F(Win32Files, OnlyFilesOpenForReading) {
  makeFolder("FOLDER");
  EXPECT_EQ(host.openInput("FOLDER"), nullptr);
  EXPECT_EQ(host.openInput("MISSING.MUS"), nullptr);
  EXPECT_EQ(host.openInput(""), nullptr);
  EXPECT_EQ(host.openInput("NUL"), nullptr) << "a device";
}

TEST_F(Win32Files, FileThatSomebodyElseWritesCanBeRead) {
  const Handle writer(CreateFileA("X.MUS", GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW, 0, nullptr));
  EXPECT_NE(host.openInput("X.MUS"), nullptr);
}

TEST_F(Win32Files, ExistingFilesAreFoundButNoFoldersAndNoNetworkPaths) {
  makeFolder("SUB");
  writeFile("SUB\\X.MUS", "x");
  EXPECT_TRUE(FileExists(host, folder / "SUB\\X.MUS"));
  EXPECT_TRUE(FileExists(host, "SUB\\X.MUS"));
  EXPECT_FALSE(FileExists(host, folder / "SUB\\Y.MUS"));
  EXPECT_FALSE(FileExists(host, folder / "SUB"));
  EXPECT_NE(host.openInput(folder / "SUB\\\\X.MUS"), nullptr) << "the system itself treats two backslashes as one";
  EXPECT_FALSE(FileExists(host, folder / "SUB\\\\X.MUS"));
}

TEST_F(Win32Files, OutputReplacesWhatTheFileHeld) {
  writeFile("R.TXT", "much longer than what comes");
  const auto file = host.openOutput("R.TXT");
  ASSERT_NE(file, nullptr);
  EXPECT_EQ(file->write("one\r\n"), std::nullopt);
  EXPECT_EQ(readFileContent("R.TXT"), "one\r\n") << "a write reaches the system at once";
  EXPECT_EQ(file->write("two\r\n"), std::nullopt);
  EXPECT_EQ(readFileContent("R.TXT"), "one\r\ntwo\r\n");
}

TEST_F(Win32Files, OutputDoesNotOpenWhereItCannotBe) {
  makeFolder("FOLDER");
  writeFile("USED.TXT", "old");
  const Handle user(CreateFileA("USED.TXT", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_EQ(host.openOutput("FOLDER"), nullptr);
  EXPECT_EQ(host.openOutput("MISSING\\R.TXT"), nullptr);
  EXPECT_EQ(host.openOutput("USED.TXT"), nullptr);
  EXPECT_EQ(readFileContent("USED.TXT"), "old");
}

TEST_F(Win32Files, FailedWriteHasTheSystemsWords) {
  writeFile("R.TXT", "old");
  const Handle onlyReadable(CreateFileA("R.TXT", GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
  EXPECT_EQ(writeAll(onlyReadable, ""), std::nullopt);
  EXPECT_EQ(writeAll(onlyReadable, "x"), systemMessage(ERROR_ACCESS_DENIED));
}

TEST_F(Win32Files, ReplacedFileIsNewOrRebuilt) {
  EXPECT_EQ(host.replaceFile("X.MUS", "first"), std::nullopt);
  EXPECT_EQ(readFileContent("X.MUS"), "first");
  EXPECT_EQ(host.replaceFile(folder / "X.MUS", "second"), std::nullopt);
  EXPECT_EQ(readFileContent("X.MUS"), "second");
  EXPECT_EQ(namesIn("."), Names{"X.MUS"});
}

TEST_F(Win32Files, FileInUseStaysAndNothingStrayIsLeft) {
  writeFile("X.MUS", "old");
  const Handle user(CreateFileA("X.MUS", GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr));
  const auto failure = host.replaceFile("X.MUS", "new");
  ASSERT_TRUE(failure);
  EXPECT_FALSE(failure->empty());
  EXPECT_EQ(readFileContent("X.MUS"), "old");
  EXPECT_EQ(namesIn("."), Names{"X.MUS"});
}

TEST_F(Win32Files, FolderOrMissingFolderCannotBeReplaced) {
  makeFolder("FOLDER");
  EXPECT_TRUE(host.replaceFile("FOLDER", "new"));
  EXPECT_TRUE(host.replaceFile("MISSING\\X.MUS", "new"));
  EXPECT_EQ(namesIn("."), Names{"FOLDER"});
}

TEST_F(Win32Files, LeftOverOfABrokenRunIsNotTouched) {
  const std::string stray = "kiv" + std::to_string(GetCurrentProcessId()) + "-1.tmp";
  writeFile(stray, "somebody's");
  EXPECT_EQ(host.replaceFile("X.MUS", "new"), std::nullopt);
  EXPECT_EQ(readFileContent(stray), "somebody's");
  EXPECT_EQ(namesIn(".").size(), 2U);
}

TEST_F(Win32Files, DeletingReturnsWhetherItDid) {
  writeFile("X.MUS", "");
  makeFolder("FOLDER");
  EXPECT_TRUE(host.deleteFile("X.MUS"));
  EXPECT_FALSE(exists("X.MUS"));
  EXPECT_FALSE(host.deleteFile("X.MUS"));
  EXPECT_FALSE(host.deleteFile("FOLDER"));
}

TEST_F(Win32Files, FolderIsListedWithItsFolders) {
  makeFolder("SUB");
  writeFile("SUB\\B.MUS", "");
  writeFile("SUB\\a.mus", "");
  makeFolder("SUB\\INNER");
  Names files;
  Names folders;
  for (const FolderEntry& entry : host.listFolder(folder / "SUB\\")) {
    (entry.isFolder ? folders : files).push_back(entry.name);
  }
  std::sort(files.begin(), files.end());
  std::sort(folders.begin(), folders.end());
  EXPECT_EQ(files, (Names{"B.MUS", "a.mus"}));
  EXPECT_EQ(folders, (Names{".", "..", "INNER"}));
  EXPECT_TRUE(host.listFolder(folder / "MISSING\\").empty());
}

TEST_F(Win32Files, NamesAreBytesOfTheCodePage) {
  const std::string name = "TR\xC4UME \xE9t\xE9.MUS";
  EXPECT_EQ(host.replaceFile(name, "x"), std::nullopt);
  EXPECT_TRUE(exists(name));
  EXPECT_EQ(readWhole(host, name), "x");
  EXPECT_EQ(readWhole(host, "tr\xE4ume \xC9T\xC9.mus"), "x") << "case does not matter, not even of accented letters";
  const auto entries = host.listFolder(folder.path() + "\\");
  EXPECT_TRUE(std::any_of(entries.begin(), entries.end(), [&](const FolderEntry& e) { return e.name == name; }));
  EXPECT_TRUE(host.deleteFile(name));
}

TEST_F(Win32Files, NameIsNotCutAtAZeroByte) {
  writeFile("X.MUS", "old");
  const std::string name("X.MUS\0.BAK", 10);
  EXPECT_EQ(host.openInput(name), nullptr);
  EXPECT_EQ(host.openOutput(name), nullptr);
  EXPECT_TRUE(host.replaceFile(name, "new"));
  EXPECT_FALSE(host.deleteFile(name));
  EXPECT_EQ(host.shortName(name), std::nullopt);
  EXPECT_TRUE(host.listFolder(folder.path() + std::string("\\\0\\", 3)).empty());
  EXPECT_FALSE(host.enterFolder(folder.path() + std::string("\0X", 2)));
  EXPECT_EQ(readFileContent("X.MUS"), "old");
  EXPECT_EQ(namesIn("."), Names{"X.MUS"});
}

TEST_F(Win32Files, CurrentFolderHasNoBackslashAtItsEnd) {
  EXPECT_EQ(host.currentFolder(), folder.path());
  makeFolder("SUB");
  EXPECT_TRUE(host.enterFolder("SUB"));
  EXPECT_EQ(host.currentFolder(), folder / "SUB");
  EXPECT_FALSE(host.enterFolder("MISSING"));
  EXPECT_EQ(host.currentFolder(), folder / "SUB");
  EXPECT_TRUE(host.enterFolder("C:\\"));
  EXPECT_EQ(host.currentFolder(), "C:\\");
}

TEST_F(Win32Files, TypedNamesBecomeFullOnes) {
  EXPECT_EQ(host.fullName("SUB/../X.MUS"), folder / "X.MUS");
  EXPECT_EQ(host.fullName("C:/A/X.MUS"), "C:\\A\\X.MUS");
  EXPECT_EQ(host.coreName("SUB/X.MUS"), "SUB\\X.MUS");
}

TEST_F(Win32Files, TemporaryFilesAreSeveral) {
  const std::string first = host.makeTemporaryFile("one\r\n");
  const std::string second = host.makeTemporaryFile("two\r\n");
  EXPECT_NE(first, second);
  EXPECT_NE(first.find('\\'), std::string::npos) << first;
  EXPECT_EQ(readFileContent(first), "one\r\n");
  EXPECT_EQ(readFileContent(second), "two\r\n");
  EXPECT_TRUE(host.deleteFile(first));
  EXPECT_TRUE(host.deleteFile(second));
}

}  // namespace
}  // namespace kiv::test
