#include "tests/window/drag.h"
#include "tests/window/panel_fixture.h"
#include "tests/window/wide_entry.h"

namespace kiv::test {
namespace {

// --- the ways out ---

TEST_F(PanelWindow, ReturnAndTheCloseBoxEndTheProgram) {
  PanelOnScreen panel;
  panel.leave();
  PanelOnScreen another;
  PostMessageA(another.window(), WM_CLOSE, 0, 0);
  EXPECT_EQ(another.process().exitCode(), 0);
}

TEST_F(PanelWindow, WithoutSettingsThereIsNoPanel) {
  DeleteFileA("KIVPROJ.PRO");
  PanelOnScreen panel;
  EXPECT_FALSE(panel.window());
  panel.answer("File does not open: " + folder / "KIVPROJ.PRO");
  EXPECT_EQ(panel.process().exitCode(), 1);
}

TEST_F(PanelWindow, ViewNamesShowsThemAndEndsTheProgram) {
  addPages();
  PanelOnScreen panel;
  panel.click(&Panel::cmdViewNames);
  auto notepad = startedBy(panel.process(), "notepad.exe");
  ASSERT_TRUE(notepad);
  HWND window = nullptr;
  EXPECT_TRUE(notepad->waitUntil([&] {
    for (HWND candidate : windowsOf(notepad->number())) {
      if (classOf(candidate) == "Notepad" && textOf(candidate).find("NAMES.TXT") != std::string::npos) {
        window = candidate;
      }
    }
    return window != nullptr;
  }));
  PostMessageA(window, WM_CLOSE, 0, 0);
  EXPECT_EQ(panel.process().exitCode(), 0);
}

// --- the choice of files ---

TEST_F(PanelWindow, ChosenFilesEnableTheButtons) {
  addPages();
  DeleteFileA("NAMES.TXT");
  bringModule("KIVNAMES.EXE", "write NAMES.TXT " + folder / "X1.MUS 1\nwrite NAMES.TXT " + folder / "X2.MUS 1\n");
  PanelOnScreen panel;
  EXPECT_FALSE(panel.isEnabled(&Panel::cmdRun));
  panel.click(&Panel::cmdSelectFiles);
  EXPECT_TRUE(panel.waitUntil([&] { return panel.isEnabled(&Panel::cmdRun); }));
  EXPECT_TRUE(panel.isEnabled(&Panel::cmdViewNames));
  panel.waitUntilIdle();
  EXPECT_EQ(readFileContent("said.txt"), "STARTDIR=" + folder.path() + ",SUFFIX=MUS,MUSFOLDER=" + folder.path() +
                                             ",NAMESFILE=" + folder / "NAMES.TXT,DEBUG=NO");
  const std::string tooltip = "Names file " + folder / "NAMES.TXT has 2 filenames, the first: ";
  EXPECT_EQ(panel.tooltipOf(&Panel::cmdViewNames), tooltip.substr(0, 80));
  panel.leave();
}

TEST_F(PanelWindow, AModuleThatAnswersNothingLeavesThePanelAsItWas) {
  for (const std::string script : {"", "crash\n"}) {
    DeleteFileA("KIVNAMES.EXE");
    DeleteFileA("said.txt");
    bringModule("KIVNAMES.EXE", script);
    PanelOnScreen panel;
    panel.click(&Panel::cmdSelectFiles);
    EXPECT_TRUE(panel.waitUntil([] { return exists("said.txt"); }));
    panel.waitUntilIdle();
    EXPECT_FALSE(panel.isEnabled(&Panel::cmdRun));
    panel.leave();
  }
}

TEST_F(PanelWindow, AModuleThatWritesABadNamesFileIsReported) {
  bringModule("KIVNAMES.EXE", "write NAMES.TXT A:\\X\\A001.MUS 1\n");
  PanelOnScreen panel;
  panel.click(&Panel::cmdSelectFiles);
  panel.answer(
      "Name in names file [A:\\X\\A001.MUS] refers to non-existing or unaccessable file\r\n"
      "Define a new names file by music file selection.");
  panel.waitUntilIdle();
  EXPECT_FALSE(panel.isEnabled(&Panel::cmdRun));
  panel.leave();
}

TEST_F(PanelWindow, WithoutTheModuleTheProgramEnds) {
  PanelOnScreen panel;
  panel.click(&Panel::cmdSelectFiles);
  panel.answer("Module KIVNAMES.EXE not properly installed");
  EXPECT_EQ(panel.process().exitCode(), 1);
}

TEST_F(PanelWindow, FolderOutsideTheCodePageIsEnteredByItsShortName) {
  const WideEntry inner(folder.path(), L"Programs \x03A9", WideEntry::Kind::folder);
  const CurrentFolder current(inner.path());
  bringSettings(folder);
  bringModule("KIVNAMES.EXE", "");
  PanelOnScreen panel;
  panel.click(&Panel::cmdSelectFiles);
  EXPECT_TRUE(panel.waitUntil([] { return exists("said.txt"); }));
  panel.waitUntilIdle();
  EXPECT_TRUE(readFileContent("said.txt").starts_with("STARTDIR=" + folder / inner.shortName() + ",SUFFIX=MUS"))
      << readFileContent("said.txt");
  panel.leave();
  for (const char* name : {"KIVPROJ.PRO", "KIVNAMES.EXE", "said.txt", "script.txt"}) {
    DeleteFileA(name);
  }
}

// --- drops ---

TEST_F(PanelWindow, DroppedFilesGoToTheirModule) {
  addPages();
  DeleteFileA("NAMES.TXT");
  bringModule("KIVOLE.EXE", "write NAMES.TXT " + folder / "X2.MUS 1\n");
  PanelOnScreen panel;
  ASSERT_TRUE(dropFiles({folder / "X2.MUS", folder / "with, comma.txt"}, panel.control(&Panel::cmdSelectFiles)));
  EXPECT_TRUE(panel.waitUntil([&] { return panel.isEnabled(&Panel::cmdRun); }));
  panel.waitUntilIdle();
  EXPECT_EQ(readFileContent("said.txt"), "STARTDIR=" + folder.path() + ",NAMESFILE=" + folder / "NAMES.TXT" +
                                             ",DEBUG=NO,TYPE=MUS,LIST=" + folder / "X2.MUS" + "," +
                                             folder / "with, comma.txt" + ",");
  panel.leave();
}

TEST_F(PanelWindow, OnlyThePartsOfADroppedNameThatNeedItAreShortened) {
  const WideEntry inner(folder.path(), L"Music \x03A9", WideEntry::Kind::folder);
  const std::string page = folder / inner.shortName() + "\\A long name 1.MUS";
  writeFile(page, "");
  bringModule("KIVOLE.EXE", "");
  PanelOnScreen panel;
  ASSERT_TRUE(dropFiles({inner.path() + L"\\A long name 1.MUS", L"C:\\missing\\\x03A9.MUS"},
                        panel.control(&Panel::cmdSelectFiles)));
  EXPECT_TRUE(panel.waitUntil([] { return exists("said.txt"); }));
  panel.waitUntilIdle();
  EXPECT_TRUE(readFileContent("said.txt").ends_with(",LIST=" + page + ",C:\\missing\\?.MUS,"))
      << readFileContent("said.txt");
  panel.leave();
  DeleteFileA(page.c_str());
}

TEST_F(PanelWindow, ADropWithoutFilesIsReported) {
  PanelOnScreen panel;
  ASSERT_TRUE(dropText("no files", panel.control(&Panel::cmdSelectFiles)));
  panel.answer("Drop error 461");
  panel.waitUntilIdle();
  panel.leave();
}

TEST_F(PanelWindow, WithoutTheDropModuleTheProgramEnds) {
  PanelOnScreen panel;
  ASSERT_TRUE(dropFiles({folder / "X2.MUS"}, panel.control(&Panel::cmdSelectFiles)));
  panel.answer("Module KIVOLE.EXE not properly installed");
  EXPECT_EQ(panel.process().exitCode(), 1);
}

// --- the result folder ---

TEST_F(PanelWindow, AnotherResultFolderIsChosenWhileThePanelIsHidden) {
  bringModule("KIVFOLDR.EXE", "wait go.txt\nwrite KIVFOLDR.KIV " + folder / "OUT\n");
  PanelOnScreen panel;
  const HWND box = panel.control(&Panel::txtFirstResultFile);
  PostMessageA(box, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(5, 5));
  PostMessageA(box, WM_LBUTTONUP, 0, MAKELPARAM(5, 5));
  EXPECT_TRUE(panel.waitUntil([] { return exists("said.txt"); }));
  EXPECT_TRUE(panel.waitUntil([&] { return IsWindowVisible(panel.window()) == FALSE; }));
  writeFile("go.txt", "");
  EXPECT_TRUE(panel.waitUntil([&] { return IsWindowVisible(panel.window()) != FALSE; }));
  panel.waitUntilIdle();
  EXPECT_EQ(panel.textOf(&Panel::txtFirstResultFile), folder / "OUT\\WORK0001.MUS");
  EXPECT_EQ(readFileContent("said.txt"),
            "REMARK=Select output folder,STARTDIR=" + folder.path() + ",FILE=KIVFOLDR.KIV,DEBUG=NO");
  panel.leave();
}

TEST_F(PanelWindow, TheFolderCanBeChosenFromTheKeyboard) {
  PanelOnScreen panel;
  PostMessageA(panel.control(&Panel::txtFirstResultFile), WM_KEYDOWN, VK_F4, 0);
  panel.answer("Module KIVFOLDR.EXE not properly installed. Name of default folder cannot be modified.");
  panel.waitUntilIdle();
  panel.leave();
}

}  // namespace
}  // namespace kiv::test
