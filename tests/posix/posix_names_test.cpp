#include <filesystem>
#include <string>

#include "tests/posix/posix_disk.h"

namespace kiv::test {
namespace {

using namespace std::string_literals;
using Names = std::set<std::string>;
using PosixNames = PosixDisk;

TEST_F(PosixNames, AFolderThatLacksTheRestGivesWayToOneOfAnotherCase) {
  disk.addFolder("PART");
  disk.addFolder("part");
  disk.addFile("part/a1.mus", "found");
  EXPECT_EQ(read("PART\\A1.MUS"), "found");
  disk.addFile("PART/a1.mus", "nearer");
  EXPECT_EQ(read("PART\\A1.MUS"), "nearer");
}

/// In a folder where every spelling of a name leads back to the folder, no component is searched more than once.
TEST_F(PosixNames, LinksThatLeadToThemselvesCostNothing) {
  for (int spelling = 0; spelling < 16; ++spelling) {
    std::string link = "abcd";
    for (int letter = 0; letter < 4; ++letter) {
      link[static_cast<std::size_t>(letter)] =
          static_cast<char>(link[static_cast<std::size_t>(letter)] - ((spelling >> letter & 1) == 0 ? 0 : 'a' - 'A'));
    }
    std::filesystem::create_directory_symlink(".", disk.path(link));
  }
  std::string folders;
  for (int depth = 0; depth < 30; ++depth) {
    folders += "AbCd\\";
  }
  EXPECT_EQ(readWhole(system, disk.core(folders + "none.mus")), std::nullopt);
  disk.addFile("a1.mus", "found");
  EXPECT_EQ(readWhole(system, disk.core(folders + "A1.MUS")), "found");
}

TEST_F(PosixNames, BackslashesSeparateFolders) {
  disk.addFolder("a/b");
  disk.addFile("a/b/c.mus", "deep");
  EXPECT_EQ(read("a\\b\\c.mus"), "deep");
}

TEST_F(PosixNames, SlashesDoToo) {
  disk.addFolder("a");
  disk.addFile("a/c.mus", "c");
  EXPECT_EQ(readWhole(system, disk.path("a/c.mus").string()), "c");
}

TEST_F(PosixNames, EveryComponentIsFoundRegardlessOfCase) {
  disk.addFolder("Music/mozart");
  disk.addFile("Music/mozart/Page1.Mus", "found");
  EXPECT_EQ(read("MUSIC\\MOZART\\PAGE1.MUS"), "found");
  EXPECT_EQ(read("music\\Mozart\\page1.mus"), "found");
}

TEST_F(PosixNames, TheWholePathMayBeInCapitals) {
  disk.addFile("page1.mus", "found");
  EXPECT_EQ(readWhole(system, system.upperCase(disk.core("page1.mus"))), "found");
}

TEST_F(PosixNames, TheExactSpellingGoesFirst) {
  disk.addFile("PAGE1.MUS", "capitals");
  disk.addFile("page1.mus", "small");
  disk.addFile("Page1.mus", "mixed");
  EXPECT_EQ(read("page1.mus"), "small");
  EXPECT_EQ(read("Page1.mus"), "mixed");
  EXPECT_EQ(read("PAGE1.MUS"), "capitals");
}

TEST_F(PosixNames, TheExactSpellingOfAFolderGoesFirst) {
  disk.addFolder("MUSIC");
  disk.addFolder("music");
  disk.addFile("MUSIC/a.mus", "capitals");
  disk.addFile("music/a.mus", "small");
  EXPECT_EQ(read("music\\A.MUS"), "small");
  EXPECT_EQ(read("MUSIC\\A.MUS"), "capitals");
}

TEST_F(PosixNames, OfSeveralOtherSpellingsTheFirstInByteOrderIsUsed) {
  for (const std::string name : {"pAGE1.mus", "page1.mus", "Page1.mus", "PAge1.mus"}) {
    disk.addFile(name, name);
    EXPECT_EQ(read("PAGE1.MUS"), *disk.entries().begin()) << "there are " << disk.entries().size();
  }
  EXPECT_EQ(read("PAGE1.MUS"), "PAge1.mus");
}

TEST_F(PosixNames, AccentsAreFoundRegardlessOfCase) {
  disk.addFolder("Ärger");
  disk.addFile("Ärger/é und ÿ 1.mus", "found");
  EXPECT_EQ(read("äRGER\\É UND Ÿ 1.MUS"), "found");
  disk.addFile("Straße.mus", "street");
  EXPECT_EQ(read("STRAßE.MUS"), "street");
  EXPECT_EQ(read("STRASSE.MUS"), "(no file)");
}

TEST_F(PosixNames, BlanksAreOfTheName) {
  disk.addFile(" a  b ", "blanks");
  EXPECT_EQ(read(" A  B "), "blanks");
  EXPECT_EQ(read("A  B"), "(no file)");
  EXPECT_EQ(read(" A B "), "(no file)");
}

TEST_F(PosixNames, BytesThatAreNoUtf8AreFoundAsTheyAre) {
  disk.addFile("caf\xE9.mus", "old");
  EXPECT_EQ(read("CAF\xE9.MUS"), "old");
  EXPECT_EQ(read("CAF\xC9.MUS"), "(no file)");
}

TEST_F(PosixNames, AZeroByteEndsNoName) {
  disk.addFile("a.mus", "a");
  const std::string name = disk.core("a.mus") + "\0.txt"s;
  EXPECT_EQ(system.openInput(name), nullptr);
  EXPECT_EQ(system.openOutput(name), nullptr);
  EXPECT_NE(system.replaceFile(name, "x"), std::nullopt);
  EXPECT_FALSE(system.deleteFile(name));
  EXPECT_TRUE(system.listFolder(disk.core() + "\0"s).empty());
  EXPECT_EQ(disk.file("a.mus"), "a");
  EXPECT_EQ(disk.entries(), Names{"a.mus"});
}

TEST_F(PosixNames, RelativeNamesAreLookedUpInTheCurrentFolder) {
  disk.addFolder("sub");
  disk.addFile("Names.txt", "names");
  disk.addFile("sub/Page.mus", "page");
  ASSERT_TRUE(system.enterFolder(disk.path().string()));
  EXPECT_EQ(readWhole(system, "Names.txt"), "names");
  EXPECT_EQ(readWhole(system, "NAMES.TXT"), "names");
  EXPECT_EQ(readWhole(system, "SUB\\PAGE.MUS"), "page");
  EXPECT_EQ(readWhole(system, ".\\SUB\\..\\NAMES.TXT"), "names");
}

TEST_F(PosixNames, AfterAChangeOfFolderTheNewOneIsLookedAt) {
  disk.addFolder("one");
  disk.addFolder("two");
  disk.addFile("one/First.txt", "1");
  disk.addFile("two/Second.txt", "2");
  setChanged("one", 1'000'000'000);
  setChanged("two", 1'000'000'000);
  ASSERT_TRUE(system.enterFolder(disk.path("one").string()));
  EXPECT_EQ(readWhole(system, "FIRST.TXT"), "1");
  ASSERT_TRUE(system.enterFolder(disk.path("two").string()));
  EXPECT_EQ(readWhole(system, "FIRST.TXT"), std::nullopt);
  EXPECT_EQ(readWhole(system, "SECOND.TXT"), "2");
}

TEST_F(PosixNames, NewFilesAreNoticedAtOnce) {
  EXPECT_EQ(read("PAGE0.MUS"), "(no file)");
  for (int i = 0; i < 100; ++i) {
    const std::string number = std::to_string(i);
    disk.addFile("page" + number + ".mus", number);
    ASSERT_EQ(read("PAGE" + number + ".MUS"), number);
  }
}

TEST_F(PosixNames, NewFilesAreNoticedWhereWeWriteToo) {
  disk.addFile("a.mus", "old");
  for (int i = 0; i < 50; ++i) {
    const std::string number = std::to_string(i);
    EXPECT_EQ(read("PAGE" + number + ".MUS"), "(no file)");
    disk.addFile("page" + number + ".mus", number);
    ASSERT_EQ(system.replaceFile(disk.core("a.mus"), "new"), std::nullopt);
    ASSERT_EQ(read("PAGE" + number + ".MUS"), number);
  }
}

TEST_F(PosixNames, DeletedAndRenamedFilesAreNoticedAtOnce) {
  for (int i = 0; i < 50; ++i) {
    disk.addFile("page.mus", "page");
    ASSERT_EQ(read("PAGE.MUS"), "page");
    std::filesystem::rename(disk.path("page.mus"), disk.path("Page.mus"));
    ASSERT_EQ(read("PAGE.MUS"), "page");
    std::filesystem::remove(disk.path("Page.mus"));
    ASSERT_EQ(read("PAGE.MUS"), "(no file)");
  }
}

TEST_F(PosixNames, AChangeOfAFolderThatWasLongAtRestIsNoticed) {
  disk.addFolder("sub");
  setChanged("sub", 1'000'000'000);
  EXPECT_EQ(read("sub\\PAGE.MUS"), "(no file)");
  disk.addFile("sub/page.mus", "page");
  EXPECT_EQ(read("sub\\PAGE.MUS"), "page");
}

TEST_F(PosixNames, AChangeWithinTheSameTickOfTheDisksClockIsNoticed) {
  const std::time_t now = std::time(nullptr);
  disk.addFolder("sub");
  setChanged("sub", now);
  EXPECT_EQ(read("sub\\PAGE.MUS"), "(no file)");
  disk.addFile("sub/page.mus", "page");
  setChanged("sub", now);
  EXPECT_EQ(read("sub\\PAGE.MUS"), "page");
}

TEST_F(PosixNames, AFolderThatAppearsLaterIsNoticed) {
  EXPECT_EQ(read("SUB\\PAGE.MUS"), "(no file)");
  disk.addFolder("sub");
  disk.addFile("sub/page.mus", "page");
  EXPECT_EQ(read("SUB\\PAGE.MUS"), "page");
}

TEST_F(PosixNames, EveryFileOfAFolderIsLookedForThroughAllFoldersOfThatName) {
  disk.addFolder("Part/one");
  disk.addFolder("part/One");
  disk.addFile("part/One/a1.mus", "second");
  disk.addFile("Part/one/a2.mus", "first");
  disk.addFile("part/One/a2.mus", "hidden");
  EXPECT_EQ(read("PART\\ONE\\A1.MUS"), "second");
  EXPECT_EQ(read("PART\\ONE\\A2.MUS"), "first");
  EXPECT_EQ(read("PART\\ONE\\A1.MUS"), "second");
}

TEST_F(PosixNames, AFolderThatIsRenamedIsSearchedForAgain) {
  disk.addFolder("Part");
  disk.addFile("Part/a1.mus", "page");
  EXPECT_EQ(read("PART\\A1.MUS"), "page");
  std::filesystem::rename(disk.path("Part"), disk.path("part"));
  EXPECT_EQ(read("PART\\A1.MUS"), "page");
  EXPECT_TRUE(write("PART\\A2.MUS", "new"));
  EXPECT_EQ(disk.file("part/A2.MUS"), "new");
}

TEST_F(PosixNames, CoreNamesHaveBackslashes) {
  EXPECT_EQ(PosixSystem::coreName("/home/a b/ä.mus"), "\\home\\a b\\ä.mus");
  EXPECT_EQ(PosixSystem::coreName("names.txt"), "names.txt");
  EXPECT_EQ(PosixSystem::coreName(""), "");
}

TEST_F(PosixNames, FullNamesStartAtTheRoot) {
  ASSERT_TRUE(system.enterFolder(disk.path().string()));
  EXPECT_EQ(system.fullName("names.txt"), disk.core("names.txt"));
  EXPECT_EQ(system.fullName("./sub/../Names.TXT"), disk.core("Names.TXT"));
  EXPECT_EQ(system.fullName("../x"), PosixSystem::coreName((disk.path().parent_path() / "x").string()));
  EXPECT_EQ(system.fullName("/a//b/./c.mus"), "\\a\\b\\c.mus");
}

}  // namespace
}  // namespace kiv::test
