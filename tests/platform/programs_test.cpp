#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/external_programs.h"
#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

using Texts = std::vector<std::string>;

class ProgramsTest : public testing::Test {
 protected:
  FakeHost host;
};

class GetProfileKeyTest : public ProgramsTest {};
class ExecCmdTest : public ProgramsTest {};
class GetShortNameTest : public ProgramsTest {};

class ShellAndWaitTest : public ProgramsTest {
 protected:
  /// What the host was asked to run.
  Texts callsOf(const std::string& cmd) {
    host.calls.clear();
    ShellAndWait(host, cmd);
    return host.calls;
  }
};

class GetLongNameTest : public ProgramsTest {
 protected:
  void addEntry(const std::string& longName, const std::string& shortName, bool isFolder = false) {
    host.folderEntries.push_back({longName, isFolder});
    host.shortNames["C:\\MUSIC\\" + longName] = "C:\\MUSIC\\" + shortName;
  }
};

// --- the profile ---

TEST_F(GetProfileKeyTest, GivesTheValue) {
  host.profile["OS"] = "XP";
  EXPECT_EQ(GetProfileKey(host, "OS"), "XP");
}

TEST_F(GetProfileKeyTest, AnAbsentKeyIsEmpty) {
  host.profile["OS"] = "XP";
  EXPECT_EQ(GetProfileKey(host, "TOP"), "");
}

TEST_F(GetProfileKeyTest, GivesNoMoreThan31Characters) {
  host.profile["TOP"] = "1234567890123456789012345678901234567890";
  host.profile["LEFT"] = "1234567890123456789012345678901";
  EXPECT_EQ(GetProfileKey(host, "TOP"), "1234567890123456789012345678901");
  EXPECT_EQ(GetProfileKey(host, "LEFT"), "1234567890123456789012345678901");
}

// --- a process ---

TEST_F(ExecCmdTest, RunsTheCommandLineUnchanged) {
  ExecCmd(host, "C:\\My Tools\\tool.exe A=b c");
  EXPECT_EQ(host.calls, Texts{"run C:\\My Tools\\tool.exe A=b c"});
}

TEST_F(ExecCmdTest, ReturnsTheExitCodeSilently) {
  for (const std::int32_t code : {0, 1, 7, -2, 2147483647}) {
    host.exitCode = code;
    EXPECT_EQ(ExecCmd(host, "TOOL"), code);
  }
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(ExecCmdTest, NotepadWithItsSuffixIsMaximized) {
  ExecCmd(host, "c:\\windows\\notepad.exe C:\\N.TXT");
  EXPECT_EQ(host.calls, Texts{"run c:\\windows\\notepad.exe C:\\N.TXT (maximized)"});
}

TEST_F(ExecCmdTest, NotepadWithoutItsSuffixIsNot) {
  ExecCmd(host, "Notepad C:\\N.TXT");
  EXPECT_EQ(host.calls, Texts{"run Notepad C:\\N.TXT"});
}

TEST_F(ExecCmdTest, OnlyNotepadIsMaximized) {
  ExecCmd(host, "WORDPAD.EXE C:\\N.TXT");
  EXPECT_EQ(host.calls, Texts{"run WORDPAD.EXE C:\\N.TXT"});
}

TEST_F(ExecCmdTest, AProgramThatDoesNotStartIsReported) {
  host.exitCode = -1;
  EXPECT_EQ(ExecCmd(host, "Notepad C:\\N.TXT"), -1);
  EXPECT_EQ(host.messages, std::vector{information("Some problem calling Notepad C:\\N.TXT")});
}

// --- the shell ---

TEST_F(ShellAndWaitTest, RunsTheProgramByItsBareName) {
  EXPECT_EQ(callsOf("C:\\PROGRAM FILES\\X\\KIVNAMES.EXE STARTDIR=C:\\A"),
            Texts{"shell KIVNAMES.EXE STARTDIR=C:\\A (style 1)"});
}

TEST_F(ShellAndWaitTest, LettersKeepTheirCase) {
  EXPECT_EQ(callsOf("c:\\x\\tool.exe"), Texts{"shell tool.exe (style 1)"});
  EXPECT_EQ(callsOf("c:\\x\\Tool.Exe Arg"), Texts{"shell Tool.Exe Arg (style 1)"});
}

TEST_F(ShellAndWaitTest, AProgramWithoutAFolderStaysAsItIs) {
  EXPECT_EQ(callsOf("KIVFOLDR.EXE"), Texts{"shell KIVFOLDR.EXE (style 1)"});
}

TEST_F(ShellAndWaitTest, TheFirstSuffixEndsTheProgram) {
  EXPECT_EQ(callsOf("C:\\X\\A.EXE C:\\Y\\B.EXE"), Texts{"shell A.EXE C:\\Y\\B.EXE (style 1)"});
  EXPECT_EQ(callsOf("C:\\A.EXE.OLD\\B.EXE"), Texts{"shell A.EXE.OLD\\B.EXE (style 1)"});
  EXPECT_EQ(callsOf("C:\\X\\A.EXEC"), Texts{"shell A.EXEC (style 1)"});
}

TEST_F(ShellAndWaitTest, ArgumentsKeepTheirBackslashesAndBlanks) {
  EXPECT_EQ(callsOf("C:\\X\\A.EXE  C:\\P Q\\R  "), Texts{"shell A.EXE  C:\\P Q\\R   (style 1)"});
}

TEST_F(ShellAndWaitTest, ViewersAreMaximized) {
  EXPECT_EQ(callsOf("C:\\W\\NOTEPAD.EXE X"), Texts{"shell NOTEPAD.EXE X (style 3)"});
  EXPECT_EQ(callsOf("wordpad.exe"), Texts{"shell wordpad.exe (style 3)"});
  EXPECT_EQ(callsOf("WinHelp.Exe"), Texts{"shell WinHelp.Exe (style 3)"});
  EXPECT_EQ(callsOf("CLIPBRD.EXE"), Texts{"shell CLIPBRD.EXE (style 3)"});
}

TEST_F(ShellAndWaitTest, AViewerAmongTheArgumentsCountsToo) {
  EXPECT_EQ(callsOf("TOOL.EXE notepad.exe"), Texts{"shell TOOL.EXE notepad.exe (style 3)"});
  EXPECT_EQ(callsOf("TOOL.EXE notepad"), Texts{"shell TOOL.EXE notepad (style 1)"});
}

TEST_F(ShellAndWaitTest, ABatchFileRunsAsAProcess) {
  EXPECT_EQ(callsOf("RUN.BAT X"), Texts{"run RUN.BAT X"});
  EXPECT_EQ(callsOf("c:\\p q\\run.bat"), Texts{"run c:\\p q\\run.bat"});
}

TEST_F(ShellAndWaitTest, TheExitCodeOfABatchFileIsDiscarded) {
  host.exitCode = 3;
  EXPECT_EQ(endOf(host, [&] { ShellAndWait(host, "RUN.BAT"); }), std::nullopt);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(ShellAndWaitTest, ABatchFileThatDoesNotStartIsReported) {
  host.exitCode = -1;
  EXPECT_EQ(endOf(host, [&] { ShellAndWait(host, "RUN.BAT X"); }), std::nullopt);
  EXPECT_EQ(host.messages, std::vector{information("Some problem calling RUN.BAT X")});
}

TEST_F(ShellAndWaitTest, AProgramGoesBeforeABatchFile) {
  EXPECT_EQ(callsOf("C:\\X\\RUN.BAT A.EXE"), Texts{"shell RUN.BAT A.EXE (style 1)"}) << "up to .EXE it is the program";
}

TEST_F(ShellAndWaitTest, AnythingElseEndsTheProgram) {
  EXPECT_EQ(endOf(host, [&] { ShellAndWait(host, "NOTEPAD X.TXT"); }), 1);
  EXPECT_EQ(endOf(host, [&] { ShellAndWait(host, ""); }), 1);
  EXPECT_EQ(host.messages,
            (std::vector{critical("ShellAndWait error: NOTEPAD X.TXT"), critical("ShellAndWait error: ")}));
  EXPECT_TRUE(host.calls.empty());
}

TEST_F(ShellAndWaitTest, AFailingShellEndsTheProgram) {
  host.shellFailure = {{-2147024894, "The system cannot find the file specified"}};
  EXPECT_EQ(endOf(host, [&] { ShellAndWait(host, "C:\\X\\KIVNAMES.EXE A=B"); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: The system cannot find the file specified\r\n"
                                                "KIVNAMES.EXE A=B")});
}

// --- short and long names ---

TEST_F(GetShortNameTest, GivesTheShortForm) {
  host.shortNames["C:\\MUSIC\\A long name.mus"] = "C:\\MUSIC\\ALONGN~1.MUS";
  EXPECT_EQ(GetShortName(host, "C:\\MUSIC\\A long name.mus"), "C:\\MUSIC\\ALONGN~1.MUS");
}

TEST_F(GetShortNameTest, GivesThePathWhereThePlatformHasNone) {
  EXPECT_EQ(GetShortName(host, "C:\\MUSIC\\A long name.mus"), "C:\\MUSIC\\A long name.mus");
}

TEST_F(GetLongNameTest, FindsTheFileByItsShortName) {
  addEntry("Another.mus", "ANOTHER.MUS");
  addEntry("Abc and more.mus", "ABC~1.MUS");
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\ABC~1.MUS"), "C:\\MUSIC\\Abc and more.mus");
  EXPECT_EQ(host.calls, Texts{"list C:\\MUSIC\\"});
}

TEST_F(GetLongNameTest, TheGivenNameIsNotUpperCased) {
  addEntry("Abc and more.mus", "ABC~1.MUS");
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\abc~1.mus"), "");
}

TEST_F(GetLongNameTest, TheShortNameOnDiskIsUpperCased) {
  addEntry("Abc and more.mus", "abc~1.Mus");
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\ABC~1.MUS"), "C:\\MUSIC\\Abc and more.mus");
}

TEST_F(GetLongNameTest, AFileWithoutAShortFormIsFoundByItsOwnName) {
  host.folderEntries = {{"abc.mus", false}};
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\ABC.MUS"), "C:\\MUSIC\\abc.mus");
}

TEST_F(GetLongNameTest, FoldersAreSkipped) {
  addEntry("Abc folder", "ABC~1.MUS", true);
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\ABC~1.MUS"), "");
  addEntry("Abc file", "ABC~1.MUS");
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\ABC~1.MUS"), "C:\\MUSIC\\Abc file");
}

TEST_F(GetLongNameTest, TheFolderItselfAndItsParentAreSkipped) {
  host.folderEntries = {{".", false}, {"..", false}};
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\."), "");
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\.."), "");
}

TEST_F(GetLongNameTest, TheFirstMatchInThePlatformsOrderCounts) {
  addEntry("Zebra.mus", "SAME.MUS");
  addEntry("Aardvark.mus", "SAME.MUS");
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\SAME.MUS"), "C:\\MUSIC\\Zebra.mus");
}

TEST_F(GetLongNameTest, TheListingHookYieldsOnceForEachEntryOfItsName) {
  addEntry("a.mus", "A.MUS");
  addEntry("Dir.bas", "DIR.BAS");
  addEntry("dir.BAS", "X", true);
  addEntry("b.mus", "B.MUS");
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\B.MUS"), "C:\\MUSIC\\b.mus");
  EXPECT_EQ(host.calls, (Texts{"list C:\\MUSIC\\", "events", "events"}));
}

TEST_F(GetLongNameTest, TheListingHookIsAFileLikeAnyOther) {
  addEntry("Dir.bas", "DIR.BAS");
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\DIR.BAS"), "C:\\MUSIC\\Dir.bas");
  EXPECT_EQ(host.calls, (Texts{"list C:\\MUSIC\\", "events"}));
}

TEST_F(GetLongNameTest, WithoutAMatchItIsEmpty) {
  addEntry("Abc.mus", "ABC.MUS");
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\XYZ.MUS"), "");
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\"), "");
}

TEST_F(GetLongNameTest, AnEmptyFolderGivesNothing) {
  EXPECT_EQ(GetLongName(host, "C:\\MUSIC\\ABC.MUS"), "");
}

TEST_F(GetLongNameTest, ANameWithoutAFolderIsEmptyAndNothingIsListed) {
  addEntry("Abc.mus", "ABC.MUS");
  EXPECT_EQ(GetLongName(host, "ABC.MUS"), "");
  EXPECT_TRUE(host.calls.empty());
}

}  // namespace
}  // namespace kiv::test
