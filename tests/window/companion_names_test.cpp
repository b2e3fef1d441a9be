#include <gtest/gtest.h>

#include "platform/win32/text.h"
#include "tests/window/companion_dialog.h"
#include "tests/window/wide_entry.h"
#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

/// KIVNAMES, started in a folder with pages.
class KivNames : public ::testing::Test {
 protected:
  KivNames() {
    makeFolder("music");
    for (const char* page : {"PAGE1.MUS", "PAGE2A.MUS", "PAGE2B.MUS", "PAGE10.MUS"}) {
      writeFile(music + "\\" + page, "");
    }
  }

  WatchedProcess startIn(const std::string& startFolder, const std::string& musFolder) const {
    return start(companionCall("KIVNAMES", "STARTDIR=" + startFolder + ",SUFFIX=MUS,MUSFOLDER=" + musFolder +
                                               ",NAMESFILE=" + namesFile + ",DEBUG=NO"));
  }
  WatchedProcess startInMusic() const { return startIn(folder.path(), music); }
  std::string record(const std::string& page) const { return music + "\\" + page + " 1\r\n"; }

  WorkFolder folder;
  std::string music = folder / "music";
  std::string namesFile = folder / "N.TXT";
};

TEST_F(KivNames, ListsTheChosenFilesInNaturalOrder) {
  WatchedProcess program = startInMusic();
  CompanionDialog(program).choose("\"PAGE10.MUS\" \"PAGE2B.MUS\" \"PAGE1.MUS\" \"PAGE2A.MUS\"");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(readFileContent("N.TXT"), "* selection of 4 files\r\n" + record("PAGE1.MUS") + record("PAGE2A.MUS") +
                                          record("PAGE2B.MUS") + record("PAGE10.MUS"));
}

TEST_F(KivNames, OneFileIsASelection) {
  WatchedProcess program = startInMusic();
  CompanionDialog(program).choose("PAGE1.MUS");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(readFileContent("N.TXT"), "* selection of 1 file\r\n" + record("PAGE1.MUS"));
}

TEST_F(KivNames, OffersTheFilesOfTheTypeAndNoOthers) {
  writeFile(music + "\\READ.ME", "");
  WatchedProcess program = startInMusic();
  CompanionDialog dialog(program);
  EXPECT_EQ(dialog.title(), "Select MUS files");
  EXPECT_EQ(dialog.filter(), "MUS files (*.MUS)");
  EXPECT_TRUE(dialog.allowsSeveral());
  dialog.expectEntries(4);
  dialog.clickCancel();
}

TEST_F(KivNames, StartsInTheStartFolderWhenThereIsNoMusicFolder) {
  for (const std::string& musFolder : {std::string(), folder / "missing"}) {
    WatchedProcess program = startIn(music, musFolder);
    CompanionDialog(program).choose("PAGE1.MUS");
    EXPECT_EQ(program.exitCode(), 0);
    EXPECT_EQ(readFileContent("N.TXT"), "* selection of 1 file\r\n" + record("PAGE1.MUS"));
    DeleteFileA("N.TXT");
  }
}

TEST_F(KivNames, FolderMayEndWithABackslash) {
  WatchedProcess program = startIn(folder.path(), music + "\\");
  CompanionDialog(program).choose("PAGE1.MUS");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(readFileContent("N.TXT"), "* selection of 1 file\r\n" + record("PAGE1.MUS"));
}

TEST_F(KivNames, CancelKeepsTheOldNamesFile) {
  writeFile("N.TXT", "old");
  WatchedProcess program = startInMusic();
  CompanionDialog(program).clickCancel();
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(readFileContent("N.TXT"), "old");
}

TEST_F(KivNames, NewNamesFileReplacesTheOldOne) {
  writeFile("N.TXT", std::string(5000, 'x'));
  WatchedProcess program = startInMusic();
  CompanionDialog(program).choose("PAGE1.MUS");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(readFileContent("N.TXT"), "* selection of 1 file\r\n" + record("PAGE1.MUS"));
  EXPECT_EQ(namesIn(folder.path()), (std::vector<std::string>{"N.TXT", "music"})) << "and nothing beside it";
}

TEST_F(KivNames, NamesFileWithoutAFolderIsInTheCurrentOne) {
  namesFile = "N.TXT";
  WatchedProcess program = startInMusic();
  CompanionDialog(program).choose("PAGE1.MUS");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(readFileContent(folder / "N.TXT"), "* selection of 1 file\r\n" + record("PAGE1.MUS"));
}

TEST_F(KivNames, CommasBlanksAndAccentsAreOrdinaryCharacters) {
  music = folder /
          "Br\xFC"
          "der, Noten";
  namesFile = folder / "My, names.txt";
  makeFolder(music);
  writeFile(music + "\\Tr\xE4ume, 2.MUS", "");
  writeFile(music + "\\Tr\xE4ume, 10.mus", "");
  WatchedProcess program = startInMusic();
  CompanionDialog(program).choose("\"Tr\xE4ume, 10.mus\" \"Tr\xE4ume, 2.MUS\"");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(readFileContent(namesFile),
            "* selection of 2 files\r\n" + record("Tr\xE4ume, 2.MUS") + record("Tr\xE4ume, 10.mus"));
}

TEST_F(KivNames, NameOutsideTheCodePageIsReplacedByItsShortName) {
  const WideEntry page2(music, L"PAGE 2 \x03A9.MUS", WideEntry::Kind::file);
  const WideEntry page10(music, L"PAGE 10 \x03A9.MUS", WideEntry::Kind::file);
  WatchedProcess program = startInMusic();
  CompanionDialog(program).choose(L"\"PAGE 10 \x03A9.MUS\" \"PAGE 2 \x03A9.MUS\" \"PAGE1.MUS\"");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(readFileContent("N.TXT"),
            "* selection of 3 files\r\n" + record(page2.shortName()) + record(page10.shortName()) + record("PAGE1.MUS"))
      << "in the order of the long names, all with one path prefix";
  EXPECT_TRUE(exists(music + "\\" + page2.shortName()));
}

TEST_F(KivNames, NumberOfFilesHasNoLimit) {
  constexpr int count = 1000;
  std::string typed;
  std::string expected = "* selection of 1000 files\r\n";
  for (int i = 1; i <= count; ++i) {
    const std::string name = "Symphony in a key with a long name, page " + std::to_string(i) + ".MUS";
    writeFile(music + "\\" + name, "");
    typed += "\"" + name + "\" ";
    expected += record(name);
  }
  EXPECT_GT(typed.size(), 32768U) << "which is where lists of names tend to end";
  WatchedProcess program = startInMusic();
  CompanionDialog(program).choose(typed);
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(readFileContent("N.TXT"), expected);
}

TEST_F(KivNames, NamesFileThatCannotBeWrittenIsReported) {
  namesFile = folder / "missing\\N.TXT";
  WatchedProcess program = startInMusic();
  CompanionDialog(program).choose("PAGE1.MUS");
  expectLastBox(program, "KIVNAMES", "Cannot write " + namesFile + "\r\n" + systemMessage(ERROR_PATH_NOT_FOUND), 1);
}

}  // namespace
}  // namespace kiv::test
