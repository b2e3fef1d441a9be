#include <filesystem>
#include <set>
#include <string>

#include "tests/posix/posix_disk.h"

namespace kiv::test {
namespace {

using Names = std::set<std::string>;
using PosixCreate = PosixDisk;

TEST_F(PosixCreate, MakesANewFile) {
  EXPECT_EQ(system.createFile(disk.core("P1.MUS"), "page"), std::nullopt);
  EXPECT_EQ(disk.entries(), Names{"P1.MUS"});
  EXPECT_EQ(disk.file("P1.MUS"), "page");
}

TEST_F(PosixCreate, AFileThatIsThereStays) {
  disk.addFile("p1.mus", "old");
  disk.addFolder("folder.mus");
  std::filesystem::create_symlink("p1.mus", disk.path("link.mus"));
  for (const std::string name : {"p1.mus", "P1.MUS", "link.mus", "folder.mus"}) {
    EXPECT_NE(system.createFile(disk.core(name), "new"), std::nullopt) << name;
  }
  EXPECT_EQ(disk.entries(), (Names{"p1.mus", "folder.mus", "link.mus"})) << "nothing is left beside them";
  EXPECT_EQ(disk.file("p1.mus"), "old");
}

TEST_F(PosixCreate, TheMissingFileThatALinkNamesIsCreated) {
  std::filesystem::create_symlink("real.mus", disk.path("link.mus"));
  EXPECT_EQ(system.createFile(disk.core("link.mus"), "new"), std::nullopt);
  EXPECT_TRUE(std::filesystem::is_symlink(disk.path("link.mus")));
  EXPECT_EQ(disk.file("real.mus"), "new");
}

TEST_F(PosixCreate, LinksThatLeadToThemselvesStay) {
  std::filesystem::create_symlink("loop.mus", disk.path("loop.mus"));
  EXPECT_NE(system.createFile(disk.core("loop.mus"), "new"), std::nullopt);
  EXPECT_NE(system.replaceFile(disk.core("loop.mus"), "new"), std::nullopt);
  EXPECT_EQ(disk.entries(), Names{"loop.mus"});
  EXPECT_TRUE(std::filesystem::is_symlink(disk.path("loop.mus")));
}

TEST_F(PosixCreate, ANewFileIsForNobodyWhoMayNotReadWhatItIsMadeFrom) {
  disk.addFile("a.mus");
  disk.addFile("b.mus");
  setMode("a.mus", 0440);
  setMode("b.mus", 0604);
  system.keepPrivacyOf(disk.path("a.mus"));
  EXPECT_EQ(system.createFile(disk.core("one.mus"), ""), std::nullopt);
  EXPECT_EQ(modeOf("one.mus"), 0640U);
  system.keepPrivacyOf(disk.path("b.mus"));
  EXPECT_EQ(system.createFile(disk.core("two.mus"), ""), std::nullopt);
  EXPECT_EQ(modeOf("two.mus"), 0600U);
}

}  // namespace
}  // namespace kiv::test
