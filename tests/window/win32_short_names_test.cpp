#include <array>

#include <gtest/gtest.h>

#include "platform/external_programs.h"
#include "platform/win32/windows_api.h"
#include "tests/window/system_host.h"
#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

std::string afterBackslash(const std::string& path) {
  return path.substr(path.rfind('\\') + 1);
}

std::string lowerCase(std::string text) {
  CharLowerBuffA(text.data(), static_cast<DWORD>(text.size()));
  return text;
}

class Win32ShortNames : public ::testing::Test {
 protected:
  void SetUp() override {
    writeFile("Trumpet in B.MUS", "");
    writeFile("Trumpet in C.MUS", "");
    makeFolder("Trumpets of all kinds");
  }
  std::string shortOf(const std::string& name) { return afterBackslash(GetShortName(host, folder / name)); }

  WorkFolder folder;
  SystemHost host;
};

TEST_F(Win32ShortNames, LongNameHasAShortOne) {
  const std::string name = shortOf("Trumpet in B.MUS");
  EXPECT_LE(name.size(), 12U) << name;
  EXPECT_NE(name, shortOf("Trumpet in C.MUS"));
  EXPECT_TRUE(exists(name)) << "both names are the file's";
}

TEST_F(Win32ShortNames, NameStaysWhereThereIsNoFile) {
  EXPECT_EQ(host.shortName(folder / "MISSING.MUS"), std::nullopt);
  EXPECT_EQ(GetShortName(host, folder / "MISSING.MUS"), folder / "MISSING.MUS");
}

TEST_F(Win32ShortNames, ShortNameThatDoesNotFitItsBufferStays) {
  std::string path = folder.path();
  while (path.size() <= 220) {
    path += "\\FOLDER12";
    makeFolder(path);
  }
  EXPECT_EQ(GetShortName(host, path), path);
}

TEST_F(Win32ShortNames, LongNameIsFoundByTheShortOne) {
  const std::string start = folder.path() + "\\";
  EXPECT_EQ(GetLongName(host, start + shortOf("Trumpet in C.MUS")), folder / "Trumpet in C.MUS");
  EXPECT_EQ(GetLongName(host, start + shortOf("Trumpet in B.MUS")), folder / "Trumpet in B.MUS");
}

TEST_F(Win32ShortNames, NameWithSmallLettersIsNotFound) {
  EXPECT_EQ(GetLongName(host, folder.path() + "\\" + lowerCase(shortOf("Trumpet in B.MUS"))), "");
}

TEST_F(Win32ShortNames, FoldersAndMissingFilesAreNotFound) {
  EXPECT_EQ(GetLongName(host, folder.path() + "\\" + shortOf("Trumpets of all kinds")), "");
  EXPECT_EQ(GetLongName(host, folder / "OTHER~1.MUS"), "");
  EXPECT_EQ(GetLongName(host, "C:\\MISSING FOLDER\\ABC~1.MUS"), "");
  EXPECT_EQ(GetLongName(host, shortOf("Trumpet in B.MUS")), "") << "a name without a folder";
}

TEST_F(Win32ShortNames, ShortFileIsItsOwnLongName) {
  writeFile("abc.mus", "");
  EXPECT_EQ(GetLongName(host, folder / "ABC.MUS"), folder / "abc.mus");
}

TEST_F(Win32ShortNames, OneEntryGivesTheUserInterfaceItsTurn) {
  writeFile("dir.bas", "");
  GetLongName(host, folder / "OTHER~1.MUS");
  EXPECT_EQ(host.eventRounds, 1);
}

}  // namespace
}  // namespace kiv::test
