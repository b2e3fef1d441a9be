#include <array>

#include <gtest/gtest.h>

#include "platform/external_programs.h"
#include "platform/win32/handle.h"
#include "platform/win32/shell_object.h"
#include "platform/win32/text.h"
#include "tests/window/started_program.h"
#include "tests/window/system_host.h"
#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

using Messages = std::vector<Message>;

/// Keeps boxes of this thread off the screen. Some systems' shells show an error about a missing program themselves,
/// and have forgotten the failure when the box is closed.
class NoBoxes {
 public:
  NoBoxes() : hook_(SetWindowsHookExA(WH_CBT, refuseBoxes, nullptr, GetCurrentThreadId())) {}
  NoBoxes(const NoBoxes&) = delete;
  NoBoxes& operator=(const NoBoxes&) = delete;
  ~NoBoxes() { UnhookWindowsHookEx(hook_); }

 private:
  static LRESULT CALLBACK refuseBoxes(int code, WPARAM window, LPARAM parameter) {
    constexpr LRESULT refused = 1;
    if (code == HCBT_CREATEWND && classOf(reinterpret_cast<HWND>(window)) == "#32770") {
      return refused;
    }
    return CallNextHookEx(nullptr, code, window, parameter);
  }

  HHOOK hook_;
};

/// A folder with a blank in its name, as the one that the system is installed in may have.
class Win32Programs : public ::testing::Test {
 protected:
  WorkFolder folder{" with blanks"};
  SystemHost host;
};

TEST_F(Win32Programs, ExitCodeIsReturned) {
  bringProgram("says_command_line.exe", "TOOL.EXE");
  EXPECT_EQ(ExecCmd(host, "TOOL.EXE A  B"), 7);
  EXPECT_EQ(readFileContent("said.txt"), "TOOL.EXE A  B");
  EXPECT_EQ(host.messages, Messages{});
}

TEST_F(Win32Programs, EndIsWaitedFor) {
  bringProgram("says_late.exe", "LATE.EXE");
  EXPECT_EQ(ExecCmd(host, "LATE.EXE"), 0);
  EXPECT_EQ(readFileContent("said.txt"), "late");
}

TEST_F(Win32Programs, ProgramThatDoesNotExistIsReported) {
  EXPECT_EQ(ExecCmd(host, "MISSING.EXE A"), -1);
  EXPECT_EQ(host.messages, Messages{information("Some problem calling MISSING.EXE A")});
}

TEST_F(Win32Programs, CommandIsNotCutAtAZeroByte) {
  bringProgram("says_command_line.exe", "TOOL.EXE");
  const std::string command("TOOL.EXE\0 A", 11);
  EXPECT_EQ(ExecCmd(host, command), -1);
  EXPECT_FALSE(exists("said.txt"));
}

TEST_F(Win32Programs, ProgramThatReturnsMinusOneIsReported) {
  bringProgram("ends_minus_one.exe", "TOOL.EXE");
  EXPECT_EQ(ExecCmd(host, "TOOL.EXE"), -1);
  EXPECT_EQ(host.messages, Messages{information("Some problem calling TOOL.EXE")});
}

TEST_F(Win32Programs, StartedProgramsShareTheCurrentFolder) {
  bringProgram("says_folder.exe", "TOOL.EXE");
  EXPECT_EQ(ExecCmd(host, "TOOL.EXE"), 0);
  EXPECT_EQ(readFileContent("said.txt"), folder.path());
}

TEST_F(Win32Programs, StartedProgramsInheritHandles) {
  bringProgram("writes_to_handle.exe", "TOOL.EXE");
  {
    SECURITY_ATTRIBUTES inheritable{sizeof(inheritable), nullptr, TRUE};
    const Handle file(CreateFileA("heard.txt", GENERIC_WRITE, 0, &inheritable, CREATE_NEW, 0, nullptr));
    ASSERT_TRUE(file.isOpen());
    const auto number = std::to_string(reinterpret_cast<LONG_PTR>(file.get()));
    EXPECT_EQ(ExecCmd(host, "TOOL.EXE " + number), 0);
  }
  EXPECT_EQ(readFileContent("heard.txt"), "inherited");
}

TEST_F(Win32Programs, OnlyNotepadWithItsSuffixIsMaximized) {
  bringProgram("says_show_state.exe", "NOTEPAD.EXE");
  ExecCmd(host, ".\\Notepad X.TXT");
  EXPECT_EQ(readFileContent("said.txt"), "nothing asked");
  ExecCmd(host, ".\\Notepad.exe X.TXT");
  EXPECT_EQ(readFileContent("said.txt"), "show 3");
}

TEST_F(Win32Programs, BatchFileIsRun) {
  writeFile("RUN.BAT", "@echo off\r\necho %1>said.txt\r\nexit 5\r\n");
  EXPECT_EQ(ExecCmd(host, "RUN.BAT X"), 5);
  EXPECT_EQ(readFileContent("said.txt"), "X\r\n");
  ShellAndWait(host, "RUN.BAT YZ");
  EXPECT_EQ(readFileContent("said.txt"), "YZ\r\n");
  EXPECT_EQ(host.messages, Messages{});
}

TEST_F(Win32Programs, ShellRunsAProgramOfTheCurrentFolderByItsBareName) {
  bringProgram("says_command_line.exe", "KIVNAMES.EXE");
  ShellAndWait(host, folder / "KIVNAMES.EXE STARTDIR=C:\\A B");
  EXPECT_NE(readFileContent("said.txt").find("KIVNAMES.EXE"), std::string::npos);
  EXPECT_TRUE(readFileContent("said.txt").ends_with(" STARTDIR=C:\\A B")) << readFileContent("said.txt");
  EXPECT_EQ(host.messages, Messages{}) << "what the program returns is no matter";
}

TEST_F(Win32Programs, ShellRunsAProgramWithoutArguments) {
  bringProgram("says_folder.exe", "tool.exe");
  ShellAndWait(host, "c:\\x\\tool.exe");
  EXPECT_EQ(readFileContent("said.txt"), folder.path());
}

TEST_F(Win32Programs, ShellWaitsForTheEnd) {
  bringProgram("says_late.exe", "LATE.EXE");
  ShellAndWait(host, folder / "LATE.EXE");
  EXPECT_EQ(readFileContent("said.txt"), "late");
}

TEST_F(Win32Programs, ShellMaximizesTheViewers) {
  bringProgram("says_show_state.exe", "TOOL.EXE");
  ShellAndWait(host, "TOOL.EXE X.TXT");
  EXPECT_EQ(readFileContent("said.txt"), "show 1");
  ShellAndWait(host, "TOOL.EXE wordpad.exe");
  EXPECT_EQ(readFileContent("said.txt"), "show 3");
}

TEST_F(Win32Programs, ShellAcceptsCodePageBytes) {
  bringProgram("says_command_line.exe", "TOOL.EXE");
  ShellAndWait(host, "TOOL.EXE STARTDIR=C:\\TR\xC4UME");
  EXPECT_TRUE(readFileContent("said.txt").ends_with(" STARTDIR=C:\\TR\xC4UME")) << readFileContent("said.txt");
}

TEST_F(Win32Programs, ProgramThatTheShellDoesNotFindEndsTheRun) {
  const NoBoxes noBoxes;
  EXPECT_EQ(endOf(host, [&] { ShellAndWait(host, folder / "MISSING.EXE X"); }), 1);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].icon, Icon::critical);
  const std::string& text = host.messages[0].text;
  const std::string start = "Run-time error: ";
  const std::string end = "\r\nMISSING.EXE X";
  EXPECT_TRUE(text.starts_with(start)) << text;
  EXPECT_TRUE(text.ends_with(end)) << text;
  const std::string words = text.substr(start.size(), text.size() - start.size() - end.size());
  EXPECT_GT(words.size(), 5U) << "the system's words for it";
  EXPECT_EQ(words.find_first_of("\r\n"), std::string::npos) << words;
}

/// Runs a command on a system without the scripting host's shell object.
std::optional<ShellFailure> runWithoutShell(const std::string& command, WindowStyle style = WindowStyle::normal) {
  return runThroughShellObject(command, style, L"KivSystem.NoSuchObject");
}

TEST_F(Win32Programs, WithoutTheShellProgramsAreStartedDirectly) {
  bringProgram("says_command_line.exe", "KIV NAMES.EXE");
  EXPECT_EQ(runWithoutShell("KIV NAMES.EXE STARTDIR=C:\\A B"), std::nullopt);
  EXPECT_EQ(readFileContent("said.txt"), "KIV NAMES.EXE STARTDIR=C:\\A B");
  bringProgram("says_late.exe", "LATE.EXE");
  EXPECT_EQ(runWithoutShell("late.exe"), std::nullopt);
  EXPECT_EQ(readFileContent("said.txt"), "late") << "the end is waited for";
}

TEST_F(Win32Programs, WithoutTheShellTheWindowStyleIsTheSame) {
  bringProgram("says_show_state.exe", "TOOL.EXE");
  EXPECT_EQ(runWithoutShell("TOOL.EXE X.TXT"), std::nullopt);
  EXPECT_EQ(readFileContent("said.txt"), "show 1");
  EXPECT_EQ(runWithoutShell("TOOL.EXE X.TXT", WindowStyle::maximized), std::nullopt);
  EXPECT_EQ(readFileContent("said.txt"), "show 3");
}

TEST_F(Win32Programs, WithoutTheShellAMissingProgramIsAFailure) {
  const auto failure = runWithoutShell("MISSING.EXE X");
  ASSERT_TRUE(failure);
  EXPECT_LT(failure->number, 0);
  EXPECT_EQ(failure->text, systemMessage(ERROR_FILE_NOT_FOUND));
}

TEST_F(Win32Programs, PreparedProcessLoadsNoLibraryOfTheCurrentFolder) {
  std::array<char, MAX_PATH> system{};
  const std::string library(system.data(), GetSystemDirectoryA(system.data(), MAX_PATH));
  ASSERT_TRUE(CopyFileA((library + "\\version.dll").c_str(), "OTHER.DLL", TRUE));
  bringProgram("loads_library.exe", "TOOL.EXE");
  EXPECT_EQ(ExecCmd(host, "TOOL.EXE"), 0);
  EXPECT_EQ(readFileContent("said.txt"), "loaded");
  EXPECT_EQ(ExecCmd(host, "TOOL.EXE prepared"), 0);
  EXPECT_EQ(readFileContent("said.txt"), "not loaded");
}

TEST_F(Win32Programs, DeliveredProgramsPrepareTheirProcess) {
  for (const char* name : {"kivsystem\\KivSystem.exe", "kivsys\\kivsys.exe", "companions\\KIVNAMES.EXE",
                           "companions\\KIVOLE.EXE", "companions\\KIVFOLDR.EXE"}) {
    EXPECT_NE(readFileContent(builtFile("..\\..\\apps\\" + std::string(name))).find("SetDefaultDllDirectories"),
              std::string::npos)
        << name;
  }
}

TEST_F(Win32Programs, PanelIsNotReplacedBySomethingThatOnlyLooksLikeIt) {
  // A system that does so replaces windows that answer nothing for seconds, as the panel while a module is open.
  EXPECT_NE(readFileContent(builtFile("..\\..\\apps\\kivsystem\\KivSystem.exe")).find("DisableProcessWindowsGhosting"),
            std::string::npos);
}

TEST_F(Win32Programs, CommandThatIsNoProgramEndsTheRun) {
  EXPECT_EQ(endOf(host, [&] { ShellAndWait(host, "NOTEPAD X.TXT"); }), 1);
  EXPECT_EQ(host.messages, Messages{critical("ShellAndWait error: NOTEPAD X.TXT")});
}

}  // namespace
}  // namespace kiv::test
