#include <algorithm>

#include "platform/win32/text.h"
#include "tests/window/browser_in_registry.h"
#include "tests/window/panel_fixture.h"
#include "tests/window/wide_entry.h"

namespace kiv::test {
namespace {

constexpr WPARAM showReport = 0x0100;

/// The command of the window's own menu that shows the report in the browser.
class PanelReport : public PanelWindow {
 protected:
  void choose(PanelOnScreen& panel) {
    DWORD_PTR result = 0;
    SendMessageTimeoutA(panel.window(), WM_SYSCOMMAND, showReport, 0, SMTO_NORMAL, 10'000, &result);
    panel.waitUntilIdle();
  }
  void analyze(PanelOnScreen& panel) {
    panel.click(&Panel::cmdRun);
    panel.answer(resultOfAnalysis());
    panel.waitUntilIdle();
  }
  bool isOpen(PanelOnScreen& panel, const char* windowClass) {
    const std::vector<HWND> windows = windowsOf(panel.process().number());
    return std::any_of(windows.begin(), windows.end(), [&](HWND window) { return classOf(window) == windowClass; });
  }
  /// Opens the window's own menu and presses the key of the command there.
  void chooseByKeyboard(PanelOnScreen& panel) {
    PostMessageA(panel.window(), WM_SYSCOMMAND, SC_KEYMENU, ' ');
    ASSERT_TRUE(panel.waitUntil([&] { return isOpen(panel, "#32768"); })) << "no menu";
    PostMessageA(panel.window(), WM_CHAR, 'b', 0);
  }

  const BrowserInRegistry browser;
};

TEST_F(PanelReport, OpensInTheBrowserAfterAnAnalysis) {
  addPages();
  PanelOnScreen panel;
  analyze(panel);
  const std::string verdict = readFileContent("KivSystem1.TXT");
  const std::string report = readFileContent("KivSystem2.TXT");
  const std::vector<std::string> names = namesIn(".");
  choose(panel);
  const std::vector<std::string> files = namesIn("TEMPORARY");
  ASSERT_EQ(files.size(), 1U);
  EXPECT_TRUE(files[0].starts_with("KivSystem-") && files[0].ends_with(".html")) << files[0];
  EXPECT_GT(files[0].size(), 40U) << "the name can be guessed";
  EXPECT_NE(browser.calledWith().find("\"" + folder / "TEMPORARY\\" + files[0] + "\""), std::string::npos);
  const std::string page = readFileContent("TEMPORARY\\" + files[0]);
  EXPECT_TRUE(page.starts_with("<!DOCTYPE html>")) << page.substr(0, 100);
  EXPECT_NE(page.find("The pages need a conversion"), std::string::npos);
  EXPECT_EQ(readFileContent("KivSystem1.TXT"), verdict);
  EXPECT_EQ(readFileContent("KivSystem2.TXT"), report);
  EXPECT_EQ(namesIn("."), names);
  EXPECT_FALSE(boxOf(panel.process().number()));
  panel.leave();
}

TEST_F(PanelReport, ShowsNothingBeforeAnAnalysis) {
  addPages();
  PanelOnScreen panel;
  choose(panel);
  EXPECT_TRUE(namesIn("TEMPORARY").empty());
  EXPECT_FALSE(boxOf(panel.process().number()));
  panel.leave();
}

TEST_F(PanelReport, IsChosenFromTheMenuOnlyAfterAnAnalysis) {
  addPages();
  PanelOnScreen panel;
  chooseByKeyboard(panel);
  PostMessageA(panel.window(), WM_KEYDOWN, VK_ESCAPE, 0);
  EXPECT_TRUE(panel.waitUntil([&] { return !isOpen(panel, "#32768"); }));
  EXPECT_TRUE(namesIn("TEMPORARY").empty());
  analyze(panel);
  chooseByKeyboard(panel);
  EXPECT_TRUE(panel.waitUntil([] { return !namesIn("TEMPORARY").empty(); }));
  panel.waitUntilIdle();
  EXPECT_NE(browser.calledWith(), "");
  panel.leave();
}

TEST_F(PanelReport, ShowsTheResultsAfterAConversionInAFileOfItsOwn) {
  addPages();
  PanelOnScreen panel;
  analyze(panel);
  choose(panel);
  EXPECT_NE(browser.calledWith(), "");
  const std::string first = namesIn("TEMPORARY").front();
  panel.click(&Panel::cmdConvert);
  panel.answer(created(folder.upper("")));
  panel.waitUntilIdle();
  choose(panel);
  EXPECT_NE(browser.calledWith(), "");
  const std::vector<std::string> files = namesIn("TEMPORARY");
  ASSERT_EQ(files.size(), 2U);
  const std::string& second = files[0] == first ? files[1] : files[0];
  EXPECT_NE(readFileContent("TEMPORARY\\" + second).find("The pages have been converted"), std::string::npos);
  panel.leave();
}

TEST_F(PanelReport, IsAboutTheAnalyzedPagesAlsoWhenOthersAreSelectedNow) {
  addPages();
  PanelOnScreen panel;
  analyze(panel);
  writeFile("NAMES.TXT", "");
  choose(panel);
  EXPECT_NE(browser.calledWith(), "");
  EXPECT_NE(readFileContent("TEMPORARY\\" + namesIn("TEMPORARY").at(0)).find("The pages need a conversion"),
            std::string::npos);
  EXPECT_EQ(readFileContent("NAMES.TXT"), "");
  panel.leave();
}

TEST_F(PanelReport, NamesAPageThatHasBeenMoved) {
  addPages();
  PanelOnScreen panel;
  analyze(panel);
  DeleteFileA("X2.MUS");
  PostMessageA(panel.window(), WM_SYSCOMMAND, showReport, 0);
  panel.answer("The report cannot be shown.\r\n" + folder.upper("X2.MUS") + "\r\n" +
               systemMessage(ERROR_FILE_NOT_FOUND));
  panel.waitUntilIdle();
  EXPECT_TRUE(namesIn("TEMPORARY").empty());
  EXPECT_TRUE(exists("NAMES.TXT"));
  EXPECT_TRUE(panel.isEnabled(&Panel::cmdConvert));
  panel.leave();
}

TEST_F(PanelReport, NamesTheFileThatTheBrowserDoesNotOpen) {
  addPages();
  PanelOnScreen panel;
  analyze(panel);
  browser.lose();
  PostMessageA(panel.window(), WM_SYSCOMMAND, showReport, 0);
  const auto box = panel.process().nextBox();
  ASSERT_TRUE(box);
  EXPECT_TRUE(box->text.starts_with("The report cannot be shown.\r\n" + folder / "TEMPORARY\\KivSystem-")) << box->text;
  panel.process().close(*box, "OK");
  EXPECT_EQ(namesIn("TEMPORARY").size(), 1U);
  panel.leave();
}

TEST_F(PanelReport, NamesTheFileThatCannotBeWritten) {
  addPages();
  RemoveDirectoryA("TEMPORARY");
  PanelOnScreen panel;
  analyze(panel);
  PostMessageA(panel.window(), WM_SYSCOMMAND, showReport, 0);
  const auto box = panel.process().nextBox();
  ASSERT_TRUE(box);
  EXPECT_TRUE(box->text.starts_with("The report cannot be shown.\r\n" + folder / "TEMPORARY\\KivSystem-")) << box->text;
  panel.process().close(*box, "OK");
  panel.leave();
}

TEST_F(PanelReport, GoesToAFolderThatTheCodePageCannotHold) {
  addPages();
  const WideEntry music(folder.path(), L"Temp \x03A9", WideEntry::Kind::folder);
  SetEnvironmentVariableW(L"TMP", (wide(folder.path()) + L"\\Temp \x03A9").c_str());
  PanelOnScreen panel;
  analyze(panel);
  choose(panel);
  EXPECT_NE(browser.calledWith(), "");
  const std::vector<std::string> files = namesIn(music.shortName());
  ASSERT_EQ(files.size(), 1U);
  DeleteFileA((music.shortName() + "\\" + files[0]).c_str());
  panel.leave();
}

TEST_F(PanelReport, IsNotMadeForASiblingTool) {
  addPages();
  WatchedProcess called = start("\"" + builtFile("..\\..\\apps\\kivsystem\\KivSystem.exe") +
                                "\" CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=" + folder / "NAMES.TXT");
  EXPECT_EQ(called.exitCode(), 0);
  EXPECT_TRUE(called.windowClasses().empty());
  EXPECT_TRUE(namesIn("TEMPORARY").empty());
}

}  // namespace
}  // namespace kiv::test
