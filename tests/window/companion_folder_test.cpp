#include <gtest/gtest.h>

#include "platform/win32/text.h"
#include "tests/window/companion_dialog.h"
#include "tests/window/wide_entry.h"
#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

/// KIVFOLDR, started in a folder with a folder for results in it.
class KivFoldr : public ::testing::Test {
 protected:
  KivFoldr() { makeFolder("out"); }

  WatchedProcess startIn(const std::string& startFolder, const std::string& prompt = "Select output folder") const {
    return start(
        companionCall("KIVFOLDR", "REMARK=" + prompt + ",STARTDIR=" + startFolder + ",FILE=KIVFOLDR.KIV,DEBUG=NO"));
  }
  static std::string answer() { return readFileContent("KIVFOLDR.KIV"); }

  WorkFolder folder;
};

TEST_F(KivFoldr, AnswersWithTheChosenFolder) {
  WatchedProcess program = startIn(folder.path());
  CompanionDialog(program).choose("out");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(answer(), "* chosen folder\r\n" + folder / "out" + "\r\n");
}

TEST_F(KivFoldr, RootOfADiskIsAFolder) {
  WatchedProcess program = startIn(folder.path());
  CompanionDialog(program).choose("C:\\");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(answer(), "* chosen folder\r\nC:\\\r\n");
}

TEST_F(KivFoldr, CancelAnswersWithoutAFolder) {
  writeFile("KIVFOLDR.KIV", "* chosen folder\r\nC:\\OLD\r\n");
  WatchedProcess program = startIn(folder.path());
  CompanionDialog(program).clickCancel();
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(answer(), "* no folder chosen\r\n");
}

TEST_F(KivFoldr, ShowsThePrompt) {
  WatchedProcess program = startIn(folder.path(), "W\xE4hlen Sie, bitte");
  CompanionDialog dialog(program);
  EXPECT_EQ(dialog.title(), "W\xE4hlen Sie, bitte");
  EXPECT_FALSE(dialog.allowsSeveral());
  dialog.clickCancel();
}

TEST_F(KivFoldr, StartFolderMayBeMissing) {
  WatchedProcess program = startIn(folder / "missing");
  CompanionDialog(program).choose(folder / "out");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(answer(), "* chosen folder\r\n" + folder / "out" + "\r\n");
}

TEST_F(KivFoldr, CommasBlanksAndAccentsAreOrdinaryCharacters) {
  makeFolder("F\xFCr Anna, Bert");
  makeFolder("F\xFCr Anna, Bert\\\xC4, 1");
  WatchedProcess program = startIn(folder / "F\xFCr Anna, Bert");
  CompanionDialog(program).choose("\xC4, 1");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(answer(), "* chosen folder\r\n" + folder / "F\xFCr Anna, Bert\\\xC4, 1" + "\r\n");
}

TEST_F(KivFoldr, NameOutsideTheCodePageIsReplacedByItsShortName) {
  const WideEntry out(folder.path(), L"Results \x03A9", WideEntry::Kind::folder);
  WatchedProcess program = startIn(folder.path());
  CompanionDialog(program).choose(L"Results \x03A9");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(answer(), "* chosen folder\r\n" + folder / out.shortName() + "\r\n");
  EXPECT_TRUE(exists(folder / out.shortName()));
}

TEST_F(KivFoldr, AnswerThatCannotBeWrittenIsReported) {
  makeFolder("KIVFOLDR.KIV");
  WatchedProcess program = startIn(folder.path());
  CompanionDialog(program).clickCancel();
  expectLastBox(program, "KIVFOLDR",
                "Cannot write " + folder / "KIVFOLDR.KIV" + "\r\n" + systemMessage(ERROR_ACCESS_DENIED), 1);
}

}  // namespace
}  // namespace kiv::test
