#include <algorithm>

#include <gtest/gtest.h>

#include "shell/version.h"
#include "tests/package/installed_program.h"
#include "tests/window/panel_on_screen.h"

namespace kiv::test {
namespace {

constexpr const char* panelCall = "CALLEDBY=KIV,FUNCTION=MAIN";

using Names = std::vector<std::string>;

std::string quoted(const std::string& path) {
  return "\"" + path + "\"";
}

/// The selection of the delivered example, as it is kept in the folder of the program.
void selectExample(const std::string& folder) {
  std::string names;
  for (const std::string& name : namesIn(folder + R"(\examples\beethoven-9)")) {
    if (name.ends_with(".MUS")) {
      names.append(folder).append(R"(\examples\beethoven-9\)").append(name).append(" 1\r\n");
    }
  }
  writeFile(folder + "\\NAMES.TXT", names);
}

// --- the zip, unpacked ---

TEST(StartScript, OpensThePanelInItsFolderAndLeavesNoConsole) {
  const WorkFolder elsewhere;
  const std::string folder = givenPath("KIV_PORTABLE");
  selectExample(folder);
  WatchedProcess script = start("cmd.exe /c \"" + quoted(folder + "\\Start KivSystem.cmd") + "\"");
  auto program = programWithPanel();
  ASSERT_TRUE(program);
  EXPECT_EQ(fileOf(*program), folder + "\\KivSystem.exe");
  EXPECT_EQ(script.exitCode(), 0) << "while the panel is there";
  PanelOnScreen panel(std::move(*program));
  ASSERT_TRUE(panel.window());
  EXPECT_TRUE(panel.isEnabled(&Panel::cmdRun)) << "the settings lead to the selection";
  panel.click(&Panel::cmdRun);
  const auto result = panel.process().nextBox();
  ASSERT_TRUE(result);
  EXPECT_NE(result->text.find("Number of files processed: 6\r\n"), std::string::npos) << result->text;
  EXPECT_NE(result->text.find("CONSISTENCY=NO\r\nMULTIFILE=YES\r\n"), std::string::npos) << result->text;
  panel.process().close(*result, "OK");
  panel.waitUntilIdle();
  panel.leave();
  EXPECT_EQ(readFileContent(folder + "\\KivSystem1.TXT"), "CONSISTENCY=NO\r\nMULTIFILE=YES\r\n");
}

// --- the installer ---

/// The program, installed for the one user of a fresh system.
class Installed : public ::testing::Test {
 protected:
  void SetUp() override {
    ASSERT_FALSE(AppEntry::exists());
    ASSERT_FALSE(exists(folder));
    ASSERT_EQ(install(), 0);
  }
  void TearDown() override {
    if (AppEntry::exists()) {
      uninstall();
    }
    for (const std::string& name : Names{"NAMES.TXT", "KIVPROJ.PRO", "mine.txt", R"(examples\mine.txt)"}) {
      DeleteFileA((folder + "\\" + name).c_str());
    }
    RemoveDirectoryA((folder + "\\examples").c_str());
    RemoveDirectoryA(folder.c_str());
    EXPECT_FALSE(exists(folder)) << "something is left";
  }

  const std::string folder = standardFolder();
  const std::string settings = folder + "\\KIVPROJ.PRO";
};

TEST_F(Installed, HasTheFilesOfTheZip) {
  const std::string unpacked = givenPath("KIV_CONTENT");
  Names expected = filesBelow(unpacked);
  EXPECT_FALSE(expected.empty());
  for (const std::string& name : expected) {
    const auto contentIn = [&](const std::string& root) {
      return readFileContent(std::string(root).append("\\").append(name));
    };
    EXPECT_TRUE(contentIn(folder) == contentIn(unpacked)) << name;
  }
  expected.emplace_back("Uninstall.exe");
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(filesBelow(folder), expected);
}

TEST_F(Installed, IsInTheUsersListOfApps) {
  EXPECT_EQ(AppEntry::text("DisplayName"), "KivSystem");
  EXPECT_EQ(AppEntry::text("DisplayVersion"), std::to_string(version::major) + "." + std::to_string(version::minor) +
                                                  "." + std::to_string(version::revision));
  EXPECT_EQ(AppEntry::text("DisplayIcon"), folder + "\\KivSystem.exe");
  EXPECT_EQ(AppEntry::text("InstallLocation"), folder);
  EXPECT_EQ(AppEntry::text("UninstallString"), quoted(folder + "\\Uninstall.exe"));
  EXPECT_EQ(AppEntry::text("QuietUninstallString"), quoted(folder + "\\Uninstall.exe") + " /S");
}

TEST_F(Installed, StartMenuOpensThePanelInItsFolder) {
  const WorkFolder elsewhere;
  selectExample(folder);
  const auto shortcut = readShortcut(shortcutFile());
  ASSERT_TRUE(shortcut);
  EXPECT_EQ(shortcut->program, folder + "\\KivSystem.exe");
  EXPECT_EQ(shortcut->arguments, panelCall);
  EXPECT_EQ(shortcut->folder, folder);
  PanelOnScreen panel(openShortcut());
  ASSERT_TRUE(panel.window());
  EXPECT_EQ(fileOf(panel.process()), folder + "\\KivSystem.exe");
  EXPECT_TRUE(panel.isEnabled(&Panel::cmdRun)) << "the settings lead to the selection";
  panel.leave();
}

TEST_F(Installed, UninstallerLeavesNothingButTheUsersFiles) {
  writeFile(folder + "\\mine.txt", "mine");
  writeFile(folder + R"(\examples\mine.txt)", "mine, too");
  uninstall();
  EXPECT_EQ(filesBelow(folder), (Names{R"(examples\mine.txt)", "mine.txt"}));
  EXPECT_EQ(namesIn(folder), (Names{"examples", "mine.txt"}));
  EXPECT_EQ(namesIn(folder + "\\examples"), Names{"mine.txt"});
  EXPECT_FALSE(exists(shortcutFile()));
}

TEST_F(Installed, UninstallerLeavesNoEmptyFolder) {
  uninstall();
  EXPECT_FALSE(exists(folder));
}

TEST_F(Installed, ChangedSettingsStayTheUsers) {
  const std::string changed = readFileContent(settings) + "Other=1\r\n";
  writeFile(settings, changed);
  ASSERT_EQ(install(), 0) << "once more";
  EXPECT_EQ(readFileContent(settings), changed);
  uninstall();
  EXPECT_EQ(filesBelow(folder), Names{"KIVPROJ.PRO"});
  EXPECT_EQ(readFileContent(settings), changed);
}

TEST_F(Installed, EarlierVersionIsRemovedFirst) {
  const WorkFolder elsewhere;
  const std::string uninstaller = folder + "\\Uninstall.exe";
  DeleteFileA(uninstaller.c_str());
  bringProgram(R"(..\window\says_command_line.exe)", uninstaller);
  ASSERT_EQ(install(), 0);
  EXPECT_EQ(readFileContent("said.txt"), quoted(uninstaller) + " /S _?=" + folder);
}

TEST_F(Installed, UninstallerOfAnotherProgramIsNeitherRunNorReplaced) {
  uninstall();
  const WorkFolder elsewhere;
  const std::string foreign = folder + "\\Uninstall.exe";
  makeFolder(folder);
  bringProgram(R"(..\window\says_command_line.exe)", foreign);
  const std::string before = readFileContent(foreign);
  EXPECT_EQ(install(), 2);
  EXPECT_FALSE(exists("said.txt"));
  EXPECT_EQ(namesIn(folder), Names{"Uninstall.exe"});
  EXPECT_TRUE(readFileContent(foreign) == before);
  DeleteFileA(foreign.c_str());
}

TEST_F(Installed, ChangedModulesAndExamplesStayTheUsers) {
  const Names changed = {"KIVNAMES.EXE", R"(examples\beethoven-9\SYMPH001.MUS)"};
  for (const std::string& name : changed) {
    writeFile(folder + "\\" + name, "mine");
  }
  ASSERT_EQ(install(), 0) << "once more";
  for (const std::string& name : changed) {
    EXPECT_EQ(readFileContent(folder + "\\" + name), "mine") << name;
  }
  uninstall();
  EXPECT_EQ(filesBelow(folder), changed);
  for (const std::string& name : changed) {
    DeleteFileA((folder + "\\" + name).c_str());
  }
  RemoveDirectoryA((folder + R"(\examples\beethoven-9)").c_str());
}

TEST_F(Installed, NothingIsReplacedWhileThePanelIsOpen) {
  PanelOnScreen panel(openShortcut());
  ASSERT_TRUE(panel.window());
  const Names before = filesBelow(folder);
  EXPECT_EQ(install(), 2);
  EXPECT_EQ(filesBelow(folder), before);
  panel.leave();
}

}  // namespace
}  // namespace kiv::test
