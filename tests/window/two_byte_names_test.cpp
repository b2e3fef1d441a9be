#include <set>

#include <gtest/gtest.h>

#include "input/files.h"
#include "platform/external_programs.h"
#include "platform/win32/text.h"
#include "platform/win32/win32_files.h"
#include "tests/window/page_folder.h"
#include "tests/window/started_program.h"
#include "tests/window/system_host.h"

namespace kiv::test {
namespace {

using Names = std::vector<std::string>;

// In the code page of Japan the second byte of this character is that of a backslash.
const std::string character = "\x95\\";

/// A folder whose name ends with such a character. These tests run in the code page of Japan.
class TwoByteNames : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_EQ(GetACP(), 932U) << "run_in_wine.sh sets the locale"; }

  std::string call(const std::string& namesFile) const {
    return "CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=" + folder / namesFile;
  }
  void addPages() {
    folder.addPage("X1.MUS", fluteAndBass);
    folder.addPage("X2.MUS", fluteAndBass);
    folder.writeNames("N.TXT");
  }

  PageFolder folder{character};
  SystemHost host;
};

TEST_F(TwoByteNames, FolderEndsAtASeparator) {
  EXPECT_EQ(folderLength("C:\\" + character), 3U);
  EXPECT_EQ(folderLength(character + ".MUS"), 0U);
  EXPECT_EQ(folderLength("C:" + character), 2U);
  EXPECT_EQ(folderLength("A/" + character), 2U);
}

TEST_F(TwoByteNames, FilesAreFoundAndReplaced) {
  EXPECT_EQ(host.replaceFile(folder / character + ".TXT", "one"), std::nullopt);
  EXPECT_EQ(host.replaceFile(character + ".TXT", "two"), std::nullopt);
  EXPECT_EQ(readFileContent(character + ".TXT"), "two");
  EXPECT_EQ(namesIn(folder.path()), Names{character + ".TXT"}) << "and nothing beside it";
  EXPECT_TRUE(FileExists(host, folder / character + ".TXT"));
  EXPECT_EQ(SystemHost::filesMatching(character + "*.TXT"), Names{character + ".TXT"});
  EXPECT_EQ(SystemHost::filesMatching(folder / "*.TXT"), Names{folder / character + ".TXT"});
  const std::string shortName = GetShortName(host, folder / character + ".TXT");
  EXPECT_EQ(GetLongName(host, folder / shortName.substr(folderLength(shortName))), folder / character + ".TXT");
}

TEST_F(TwoByteNames, ProgramIsStartedByItsBareName) {
  bringProgram("says_command_line.exe", character + ".EXE");
  ShellAndWait(host, folder / character + ".EXE A=B");
  EXPECT_TRUE(readFileContent("said.txt").ends_with(" A=B")) << readFileContent("said.txt");
}

TEST_F(TwoByteNames, PagesAreAnalyzedForACaller) {
  addPages();
  bringProgram("..\\..\\apps\\kivsystem\\KivSystem.exe", "KivSystem.exe");
  WatchedProcess program = start(folder / "KivSystem.exe " + call("N.TXT"));
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(program.windowClasses(), std::set<std::string>{});
  EXPECT_EQ(readFileContent("KivSystem1.TXT"), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
}

TEST_F(TwoByteNames, PagesAreAnalyzedAtTheCommandPrompt) {
  addPages();
  const std::string kivsys = "\"" + builtFile("..\\..\\apps\\kivsys\\kivsys.exe") + "\"";
  WatchedProcess program = start(kivsys + " analyze X1.MUS " + folder / "X2.MUS", "out.txt", "err.txt");
  EXPECT_EQ(program.exitCode(), 0) << readFileContent("err.txt");
  EXPECT_TRUE(readFileContent("out.txt").starts_with("CONSISTENCY=YES")) << readFileContent("out.txt");
}

TEST_F(TwoByteNames, DroppedFilesAreListed) {
  addPages();
  const std::string kivole = "\"" + builtFile("..\\..\\apps\\companions\\KIVOLE.EXE") + "\"";
  WatchedProcess program = start(kivole + " STARTDIR=" + folder.path() + ",NAMESFILE=" + folder / "N2.TXT" +
                                 ",DEBUG=NO,TYPE=MUS,LIST=" + folder / "X2.MUS" + "," + folder / "X1.MUS" + ",");
  EXPECT_EQ(program.exitCode(), 0);
  EXPECT_EQ(readFileContent("N2.TXT"),
            "* selection of 2 files\r\n" + folder / "X1.MUS" + " 1\r\n" + folder / "X2.MUS" + " 1\r\n");
}

}  // namespace
}  // namespace kiv::test
