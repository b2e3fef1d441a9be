#include <initializer_list>

#include <gtest/gtest.h>

#include "tests/window/panel_on_screen.h"

namespace kiv::test {
namespace {

const std::string noFolderModule =
    "Module KIVFOLDR.EXE not properly installed. Name of default folder cannot be modified.";

/// Clicks and keys at all kinds of moments, as messages in the order in which a user causes them.
class PanelClicks : public ::testing::Test {
 protected:
  void SetUp() override { bringSettings(folder); }
  /// The module for the choice of files, which plays this script.
  void bringModule(const std::string& script) {
    bringProgram("plays_module.exe", "KIVNAMES.EXE");
    writeFile("script.txt", script);
  }
  /// Analyzes two pages that differ.
  void analyze(PanelOnScreen& panel) {
    panel.click(&Panel::cmdRun);
    const auto box = panel.process().nextBox();
    ASSERT_TRUE(box);
    panel.process().close(*box, "OK");
    panel.waitUntilIdle();
    ASSERT_TRUE(panel.isEnabled(&Panel::cmdConvert));
  }
  void addPages() {
    folder.addPage("X1.MUS",
                   "staff 2 at 0 size 1 lines 5 instrument 101\nnote 2 at 20 duration 4\nbarline 2 at 60 spans 1\n"
                   "staff 1 at 0 size 1 lines 5 instrument 102\ntimesignature 1 at 9 upper 4 lower 4\n"
                   "note 1 at 20 duration 4\nbarline 1 at 0 spans 2\nbarline 1 at 60 spans 1\n");
    folder.addPage("X2.MUS",
                   "staff 1 at 0 size 1 lines 5 instrument 102\nnote 1 at 20 duration 4\nbarline 1 at 0 spans 1\n"
                   "barline 1 at 50 spans 1\n");
    folder.writeNames("NAMES.TXT");
  }

  PageFolder folder;
};

HWND focusOf(const PanelOnScreen& panel) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  GetGUIThreadInfo(GetWindowThreadProcessId(panel.window(), nullptr), &info);
  return info.hwndFocus;
}

void mouse(HWND window, UINT message, int x, int y) {
  PostMessageA(window, message, message == WM_LBUTTONUP ? 0 : MK_LBUTTON, MAKELPARAM(x, y));
}

/// Whether everything that was posted, and its effects, are processed and no box is shown.
bool staysQuiet(PanelOnScreen& panel) {
  // Messages are processed in their order; the second mark comes after what was posted while the first one waited.
  for (int marks = 0; marks < 2; ++marks) {
    const bool before = panel.isChecked(&Panel::chkOverwrite);
    PostMessageA(panel.control(&Panel::chkOverwrite), BM_SETCHECK, before ? BST_UNCHECKED : BST_CHECKED, 0);
    EXPECT_TRUE(panel.waitUntil([&] {
      return panel.isChecked(&Panel::chkOverwrite) != before || boxOf(panel.process().number()).has_value();
    }));
  }
  return !boxOf(panel.process().number());
}

// --- the keyboard ---

TEST_F(PanelClicks, EnterClicksTheFirstButtonRightAfterTheStart) {
  bringModule("");
  PanelOnScreen panel;
  const HWND first = panel.control(&Panel::cmdSelectFiles);
  ASSERT_TRUE(panel.waitUntil([&] { return focusOf(panel) == first; }));
  PostMessageA(first, WM_KEYDOWN, VK_RETURN, 0);
  EXPECT_TRUE(panel.waitUntil([] { return exists("said.txt"); }));
  panel.waitUntilIdle();
  panel.leave();
}

TEST_F(PanelClicks, TheTabKeyGoesToConvertAsSoonAsItIsEnabled) {
  addPages();
  PanelOnScreen panel;
  analyze(panel);
  PostMessageA(panel.window(), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(panel.control(&Panel::cmdSelectFiles)), TRUE);
  for (Control Panel::*control : {&Panel::cmdSelectFiles, &Panel::cmdViewNames, &Panel::cmdRun, &Panel::cmdReturn,
                                  &Panel::cmdConvert, &Panel::txtFirstResultFile}) {
    EXPECT_TRUE(panel.waitUntil([&] { return focusOf(panel) == panel.control(control); })) << panel.textOf(control);
    PostMessageA(panel.control(control), WM_KEYDOWN, VK_TAB, 0);
  }
  panel.leave();
}

// --- while something runs ---

TEST_F(PanelClicks, ADoubleClickRunsTheModuleOnce) {
  bringModule("wait go.txt\nwrite runs.txt run\n");
  PanelOnScreen panel;
  const HWND button = panel.control(&Panel::cmdSelectFiles);
  for (const UINT message : std::initializer_list<UINT>{WM_LBUTTONDOWN, WM_LBUTTONUP, WM_LBUTTONDBLCLK, WM_LBUTTONUP}) {
    mouse(button, message, 5, 5);
  }
  EXPECT_TRUE(panel.waitUntil([] { return exists("said.txt"); }));
  writeFile("go.txt", "");
  panel.waitUntilIdle();
  panel.leave();
  EXPECT_EQ(readFileContent("runs.txt"), "run\r\n");
}

TEST_F(PanelClicks, ReturnHasNoEffectWhileAModuleRuns) {
  bringModule("wait go.txt\nwrite runs.txt run\n");
  PanelOnScreen panel;
  panel.click(&Panel::cmdSelectFiles);
  EXPECT_TRUE(panel.waitUntil([] { return exists("said.txt"); }));
  panel.click(&Panel::cmdReturn);
  writeFile("go.txt", "");
  panel.waitUntilIdle();
  panel.click(&Panel::cmdSelectFiles);
  EXPECT_TRUE(panel.waitUntil([] { return readFileContent("runs.txt") == "run\r\nrun\r\n"; }));
  panel.waitUntilIdle();
  panel.leave();
}

TEST_F(PanelClicks, WhatIsTypedWhileAConversionRunsChangesNothing) {
  addPages();
  writeFile("WORK0001.MUS", "old");
  makeFolder("OUT");
  PanelOnScreen panel;
  panel.clickAndWait(&Panel::chkOverwrite);
  analyze(panel);
  panel.click(&Panel::cmdConvert);
  const auto question = panel.process().nextBox();
  ASSERT_TRUE(question);
  panel.type(folder / "OUT\\WORK0001.MUS");
  EXPECT_EQ(panel.textOf(&Panel::txtFirstResultFile), folder.upper("WORK0001.MUS"));
  panel.process().close(*question, "Yes");
  panel.answer("Created 2 files.\r\nFirst is " + folder.upper("WORK0001.MUS") + "\r\nLast is " +
               folder.upper("WORK0002.MUS"));
  panel.waitUntilIdle();
  EXPECT_EQ(panel.textOf(&Panel::txtFirstResultFile), folder.upper("WORK0001.MUS"));
  EXPECT_TRUE(namesIn("OUT").empty());
  panel.leave();
}

// --- the mouse over the text box ---

TEST_F(PanelClicks, AClickIntoTheTextBoxOpensTheChoice) {
  PanelOnScreen panel;
  const HWND box = panel.control(&Panel::txtFirstResultFile);
  mouse(box, WM_LBUTTONDOWN, 5, 5);
  mouse(box, WM_LBUTTONUP, 6, 4);
  panel.answer(noFolderModule);
  panel.waitUntilIdle();
  panel.leave();
}

TEST_F(PanelClicks, TheMousePressedElsewhereAndReleasedOverTheTextBoxOpensNothing) {
  PanelOnScreen panel;
  mouse(panel.control(&Panel::txtFirstResultFile), WM_LBUTTONUP, 5, 5);
  EXPECT_TRUE(staysQuiet(panel));
  panel.leave();
}

TEST_F(PanelClicks, TheMousePressedInTheTextBoxAndReleasedOutsideOpensNothing) {
  PanelOnScreen panel;
  const HWND box = panel.control(&Panel::txtFirstResultFile);
  mouse(box, WM_LBUTTONDOWN, 5, 5);
  mouse(box, WM_LBUTTONUP, 5, 60);
  EXPECT_TRUE(staysQuiet(panel));
  // The click is over: the button that is released now was pressed elsewhere.
  mouse(box, WM_LBUTTONUP, 5, 5);
  EXPECT_TRUE(staysQuiet(panel));
  panel.leave();
}

}  // namespace
}  // namespace kiv::test
