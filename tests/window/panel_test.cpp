#include <array>
#include <cmath>
#include <cstdlib>

#include <gtest/gtest.h>

#include "shell/start_up.h"
#include "shell/version.h"
#include "tests/window/drag.h"
#include "tests/window/panel_on_screen.h"

namespace kiv::test {
namespace {

constexpr double twipsPerPixel = 15;

/// The panel in a folder of its own, with its settings and two pages that differ.
class PanelWindow : public ::testing::Test {
 protected:
  void SetUp() override { bringSettings(folder); }
  void addPages() {
    folder.addPage("X1.MUS", trio);
    folder.addPage("X2.MUS", duo);
    folder.writeNames("NAMES.TXT");
  }
  void bringModule(const std::string& name, const std::string& script) {
    bringProgram("plays_module.exe", name);
    writeFile("script.txt", script);
  }
  std::string resultOfAnalysis() const {
    return "Result of the Analysis.\r\nNumber of files processed: 2\r\nNumber of staves (instruments) per system: 3\r\n"
           "\r\nCONSISTENCY=NO\r\nMULTIFILE=NO\r\n\r\nInput does NOT qualify for conversion\r\n"
           "Use Convert button to create consistent input for KivScore2XML or KivSpli6.";
  }
  std::string created(const std::string& results) const {
    return "Created 2 files.\r\nFirst is " + results + "WORK0001.MUS\r\nLast is " + results + "WORK0002.MUS";
  }

  PageFolder folder;
  const std::string trio =
      "staff 3 at 0 size 1 lines 5 instrument 101\nnote 3 at 20 duration 4\nbarline 3 at 60 spans 1\n"
      "staff 2 at 0 size 1 lines 5 instrument 102\nnote 2 at 20 duration 4\nbarline 2 at 60 spans 1\n"
      "staff 1 at 0 size 1 lines 5 instrument 103\ntimesignature 1 at 9 upper 4 lower 4\nnote 1 at 20 duration 4\n"
      "barline 1 at 0 spans 3\nbarline 1 at 60 spans 1\n";
  const std::string duo =
      "staff 2 at 0 size 1 lines 5 instrument 101\nnote 2 at 20 duration 4\nbarline 2 at 50 spans 1\n"
      "staff 1 at 0 size 1 lines 5 instrument 103\nnote 1 at 20 duration 4\n"
      "barline 1 at 0 spans 2\nbarline 1 at 50 spans 1\n";
};

// --- what is seen ---

struct Expected {
  Control Panel::*control;
  const char* windowClass;
  const char* text;
  const char* tooltip;
  std::array<int, 4> place;  ///< left, top, width, height in twips from the window's inside
  bool enabled = true;
  bool visible = true;
  bool checked = false;
};

const std::array<Expected, 23> controls = {{
    {&Panel::cmdSelectFiles, "Button", "Select file(s)", "", {120, 120, 1335, 420}},
    {&Panel::cmdViewNames, "Button", "View names", "", {120, 600, 1335, 420}, false},
    {&Panel::label2, "Static", "Push or drop filenames on the button to select input.", "", {1560, 240, 6855, 195}},
    {&Panel::frame1, "Button", "Function", "", {120, 1080, 8295, 1095}},
    {&Panel::label1,
     "Static",
     "This program analyzes input files for an identical system structure. Each system must have an identical "
     "instrument "
     "layout (called 'consistency').",
     "",
     {240, 1320, 8055, 495}},
    {&Panel::label4,
     "Static",
     "It also checks if there are multifile pages (one system on more than one file).",
     "",
     {240, 1800, 8055, 195}},
    {&Panel::frame3, "Button", "Filenames", "", {120, 2280, 8295, 735}},
    {&Panel::label5,
     "Static",
     "Filename convention requires an incremental numeric portion just left of the suffix period. Multifile pages must "
     "have a single sequence letter starting with A (top of page) between the incremental portion and the suffix "
     "period.",
     "",
     {240, 2520, 8055, 405}},
    {&Panel::frame2, "Button", "Result", "", {120, 3120, 8295, 800}},
    {&Panel::label3,
     "Static",
     "When there is no consistency or there were multifile pages, the 'convert' option (after analysis) makes one file "
     "per system with identical layout. Rest staves will be inserted for missing instruments.",
     "",
     {240, 3360, 8055, 495}},
    {&Panel::lblWait, "Static", "Wait for ", "", {120, 4080, 8295, 255}, true, false},
    {&Panel::label7,
     "Static",
     "The analyze function establishes if the iinput requires conversion. If so, the convert option becomes enabled.",
     "",
     {120, 4440, 8295, 195}},
    {&Panel::label8,
     "Static",
     "This program is called invisibly by KivSplit and KivScore2XML.",
     "",
     {120, 4680, 6255, 195}},
    {&Panel::cmdRun, "Button", "Analyze", "", {7080, 4800, 1335, 420}, false},
    {&Panel::label6, "Static", "First conversion result file name", "", {120, 5040, 2055, 255}},
    {&Panel::txtFirstResultFile,
     "Edit",
     "",
     "Click to select a different folder. The first output file is always WORK0001.MUS ",
     {120, 5280, 6855, 285}},
    {&Panel::cmdConvert, "Button", "Convert", "", {7080, 5280, 1335, 420}, false},
    {&Panel::chkOverwrite, "Button", "Overwrite", "", {2160, 5640, 1815, 192}, true, true, true},
    {&Panel::chkDebug, "Button", "Trace", "Visible to developer only.", {4200, 5640, 855, 192}, true, false},
    {&Panel::cmdReturn, "Button", "Return", "", {7080, 5760, 1335, 420}},
    {&Panel::cmdSortInstrument,
     "Button",
     "Sort Instrument",
     "This function sorts the selected files per instrument - top to bottom",
     {120, 5760, 1815, 375},
     true,
     false},
    {&Panel::chkShowInstrNumber, "Button", "Show instrument id.", "", {2160, 5880, 2055, 195}, true, true, true},
    {&Panel::chkIggZeroInstrId, "Button", "Ignore Zero Instr Id staves", "", {4200, 5880, 2775, 195}},
}};

void expectNear(LONG pixels, double twips, const char* what) {
  EXPECT_LE(std::abs(static_cast<double>(pixels) - twips / twipsPerPixel), 0.5 + 1e-9) << what;
}

TEST_F(PanelWindow, ShowsEveryControlInItsPlaceAndState) {
  PanelOnScreen panel;
  ASSERT_TRUE(panel.window());
  for (const Expected& expected : controls) {
    SCOPED_TRACE(expected.text);
    ASSERT_TRUE(panel.control(expected.control));
    EXPECT_EQ(classOf(panel.control(expected.control)), expected.windowClass);
    EXPECT_EQ(panel.textOf(expected.control), expected.text);
    EXPECT_EQ(panel.tooltipOf(expected.control), std::string(expected.tooltip).substr(0, 80));
    EXPECT_EQ(panel.isEnabled(expected.control), expected.enabled);
    EXPECT_EQ(panel.isVisible(expected.control), expected.visible);
    EXPECT_EQ(panel.isChecked(expected.control), expected.checked);
    const RECT place = panel.placeOf(expected.control);
    const auto [left, top, width, height] = expected.place;
    expectNear(place.left, left, "left");
    expectNear(place.top, top, "top");
    expectNear(place.right, left + width, "right");
    expectNear(place.bottom, top + height, "bottom");
  }
  panel.leave();
}

TEST_F(PanelWindow, HasTitleSizeAndTheButtonsOfAFixedWindow) {
  PanelOnScreen panel;
  ASSERT_TRUE(panel.window());
  EXPECT_EQ(textOf(panel.window()), "KivSystem - " + versionText(version::major, version::minor, version::revision));
  RECT inside{};
  GetClientRect(panel.window(), &inside);
  expectNear(inside.right, panelWidth, "width of the inside");
  EXPECT_GE(inside.bottom, panelHeight / twipsPerPixel);
  RECT outside{};
  GetWindowRect(panel.window(), &outside);
  expectNear(outside.bottom - outside.top, 6860, "height over all");
  const LONG style = GetWindowLongA(panel.window(), GWL_STYLE);
  EXPECT_EQ(style & (WS_THICKFRAME | WS_MAXIMIZEBOX), 0);
  EXPECT_EQ(style & (WS_CAPTION | WS_MINIMIZEBOX | WS_SYSMENU), LONG{WS_CAPTION | WS_MINIMIZEBOX | WS_SYSMENU});
  panel.leave();
}

TEST_F(PanelWindow, StandsInTheMiddleOfTheScreen) {
  PanelOnScreen panel;
  RECT place{};
  GetWindowRect(panel.window(), &place);
  EXPECT_NEAR(place.left, GetSystemMetrics(SM_CXSCREEN) - place.right, 1);
  EXPECT_NEAR(place.top, GetSystemMetrics(SM_CYSCREEN) - place.bottom, 1);
  panel.leave();
}

TEST_F(PanelWindow, StandsWhereTheProfileSays) {
  WriteProfileStringA("KIV", "TOP", "1000");
  WriteProfileStringA("KIV", "LEFT", "2000");
  WriteProfileStringA("KIV", "OS", "XP");
  PanelOnScreen panel;
  RECT place{};
  GetWindowRect(panel.window(), &place);
  WriteProfileStringA("KIV", nullptr, nullptr);
  expectNear(place.left, 2000, "left");
  expectNear(place.top, 1000, "top");
  expectNear(place.bottom - place.top, 6660, "height over all");
  panel.leave();
}

TEST_F(PanelWindow, OpensAtTheFirstControlAndTheTabKeyGoesOn) {
  addPages();
  PanelOnScreen panel;
  DWORD process = 0;
  const DWORD thread = GetWindowThreadProcessId(panel.window(), &process);
  const auto focus = [thread] {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    GetGUIThreadInfo(thread, &info);
    return info.hwndFocus;
  };
  for (Control Panel::*control :
       {&Panel::cmdSelectFiles, &Panel::cmdViewNames, &Panel::cmdRun, &Panel::cmdReturn, &Panel::txtFirstResultFile,
        &Panel::chkOverwrite, &Panel::chkShowInstrNumber, &Panel::chkIggZeroInstrId, &Panel::cmdSelectFiles}) {
    EXPECT_TRUE(panel.waitUntil([&] { return focus() == panel.control(control); })) << panel.textOf(control);
    PostMessageA(panel.control(control), WM_KEYDOWN, VK_TAB, 0);
  }
  panel.leave();
}

TEST_F(PanelWindow, ADeveloperSeesTheTraceBox) {
  writeFile("KIVXREF5.ASM", "");
  PanelOnScreen panel("");
  ASSERT_TRUE(panel.window());
  EXPECT_TRUE(panel.isVisible(&Panel::chkDebug));
  panel.leave();
}

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
  panel.press(&Panel::cmdViewNames);
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
  panel.press(&Panel::cmdSelectFiles);
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
    panel.press(&Panel::cmdSelectFiles);
    EXPECT_TRUE(panel.waitUntil([] { return exists("said.txt"); }));
    panel.waitUntilIdle();
    EXPECT_FALSE(panel.isEnabled(&Panel::cmdRun));
    panel.leave();
  }
}

TEST_F(PanelWindow, AModuleThatWritesABadNamesFileIsReported) {
  bringModule("KIVNAMES.EXE", "write NAMES.TXT A:\\X\\A001.MUS 1\n");
  PanelOnScreen panel;
  panel.press(&Panel::cmdSelectFiles);
  panel.answer(
      "Name in names file [A:\\X\\A001.MUS] refers to non-existing or unaccessable file\r\n"
      "Define a new names file by music file selection.");
  panel.waitUntilIdle();
  EXPECT_FALSE(panel.isEnabled(&Panel::cmdRun));
  panel.leave();
}

TEST_F(PanelWindow, WithoutTheModuleTheProgramEnds) {
  PanelOnScreen panel;
  panel.press(&Panel::cmdSelectFiles);
  panel.answer("Module KIVNAMES.EXE not properly installed");
  EXPECT_EQ(panel.process().exitCode(), 1);
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

TEST_F(PanelWindow, AnotherResultFolderIsChosenInThePanelsPlace) {
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

// --- the work ---

TEST_F(PanelWindow, AnalyzesAndConvertsFromTheFirstToTheLastResult) {
  addPages();
  PanelOnScreen panel;
  panel.press(&Panel::cmdRun);
  panel.answer(resultOfAnalysis());
  EXPECT_TRUE(panel.waitUntil([&] { return panel.isEnabled(&Panel::cmdConvert); }));
  EXPECT_EQ(panel.textOf(&Panel::txtFirstResultFile), folder.upper("WORK0001.MUS"));
  panel.press(&Panel::cmdConvert);
  panel.answer(created(folder.upper("")));
  panel.waitUntilIdle();
  EXPECT_FALSE(panel.isVisible(&Panel::lblWait));
  EXPECT_TRUE(exists("WORK0001.MUS"));
  EXPECT_TRUE(exists("WORK0002.MUS"));
  panel.leave();
}

TEST_F(PanelWindow, LeavesWhatTheConsoleProgramLeaves) {
  addPages();
  makeFolder("PANEL");
  makeFolder("CONSOLE");
  {
    PanelOnScreen panel;
    panel.press(&Panel::cmdRun);
    panel.answer(resultOfAnalysis());
    panel.waitUntilIdle();
    panel.type(folder / "PANEL\\WORK0001.MUS");
    panel.press(&Panel::cmdConvert);
    panel.answer(created(folder / "PANEL\\"));
    panel.waitUntilIdle();
    panel.leave();
  }
  const std::string verdict = readFileContent("KivSystem1.TXT");
  const std::string report = readFileContent("KivSystem2.TXT");
  WatchedProcess console = start("\"" + builtFile("..\\..\\apps\\kivsys\\kivsys.exe") +
                                     "\" convert --names NAMES.TXT --result CONSOLE\\WORK0001.MUS",
                                 "out.txt", "error.txt");
  EXPECT_EQ(console.exitCode(), 0) << readFileContent("error.txt");
  EXPECT_EQ(namesIn("CONSOLE"), namesIn("PANEL"));
  for (const std::string name : {"WORK0001.MUS", "WORK0002.MUS"}) {
    EXPECT_EQ(readFileContent("PANEL\\" + name), readFileContent("CONSOLE\\" + name)) << name;
  }
  const auto withoutDate = [](const std::string& text) { return text.substr(text.find('\n')); };
  EXPECT_EQ(readFileContent("KivSystem1.TXT"), verdict);
  EXPECT_EQ(withoutDate(readFileContent("KivSystem2.TXT")), withoutDate(report));
}

TEST_F(PanelWindow, InputThatQualifiesEndsTheProgram) {
  folder.addPage("X1.MUS", trio);
  folder.writeNames("NAMES.TXT");
  PanelOnScreen panel;
  panel.press(&Panel::cmdRun);
  panel.answer(
      "Input qualifies for conversion to one file per system.\r\n"
      "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.");
  EXPECT_EQ(panel.process().exitCode(), 0);
}

TEST_F(PanelWindow, AnEmptySelectionIsToldAndThePanelGoesOn) {
  addPages();
  PanelOnScreen panel;
  DeleteFileA("NAMES.TXT");
  panel.press(&Panel::cmdRun);
  panel.answer("No input files: " + folder / "NAMES.TXT");
  panel.waitUntilIdle();
  EXPECT_FALSE(panel.isVisible(&Panel::lblWait));
  EXPECT_FALSE(panel.isEnabled(&Panel::cmdConvert));
  panel.leave();
}

TEST_F(PanelWindow, WhileARunIsOnTheWaitLabelShowsAndPressesHaveNoEffect) {
  folder.addPage("X1.MUS", std::string(withoutIdentifier));
  folder.writeNames("NAMES.TXT");
  PanelOnScreen panel;
  panel.press(&Panel::cmdRun);
  const auto box = panel.process().nextBox();
  ASSERT_TRUE(box);
  EXPECT_TRUE(panel.isVisible(&Panel::lblWait));
  EXPECT_EQ(panel.textOf(&Panel::lblWait), "Wait for analysis to finish");
  panel.pressAndWait(&Panel::cmdReturn);
  panel.pressAndWait(&Panel::chkIggZeroInstrId);
  SendMessageA(panel.window(), WM_CLOSE, 0, 0);
  EXPECT_FALSE(panel.isChecked(&Panel::chkIggZeroInstrId));
  EXPECT_TRUE(IsWindow(box->window));
  panel.process().close(*box, "OK");
  panel.answer(
      "Input qualifies for conversion to one file per system.\r\n"
      "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.");
  EXPECT_EQ(panel.process().exitCode(), 0);
}

TEST_F(PanelWindow, TheBoxForZeroIdentifiersCounts) {
  folder.addPage("X1.MUS", std::string(withoutIdentifier));
  folder.writeNames("NAMES.TXT");
  PanelOnScreen panel;
  panel.pressAndWait(&Panel::chkIggZeroInstrId);
  EXPECT_TRUE(panel.isChecked(&Panel::chkIggZeroInstrId));
  panel.press(&Panel::cmdRun);
  panel.answer(
      "Input qualifies for conversion to one file per system.\r\n"
      "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.");
  EXPECT_EQ(panel.process().exitCode(), 0);
}

TEST_F(PanelWindow, WithoutOverwriteItAsksAndObeys) {
  addPages();
  writeFile("WORK0001.MUS", "old");
  const std::string question = "File exists: " + folder.upper("WORK0001.MUS") + "\r\n\r\nOverwrite?";
  {
    PanelOnScreen panel;
    panel.pressAndWait(&Panel::chkOverwrite);
    panel.press(&Panel::cmdRun);
    panel.answer(resultOfAnalysis());
    panel.waitUntilIdle();
    panel.press(&Panel::cmdConvert);
    panel.answer(question, "No");
    panel.answer("Abnormal termination forced by user.");
    EXPECT_EQ(panel.process().exitCode(), 1);
    EXPECT_EQ(readFileContent("WORK0001.MUS"), "old");
  }
  PanelOnScreen panel;
  panel.pressAndWait(&Panel::chkOverwrite);
  panel.press(&Panel::cmdRun);
  panel.answer(resultOfAnalysis());
  panel.waitUntilIdle();
  panel.press(&Panel::cmdConvert);
  panel.answer(question, "Yes");
  panel.answer(created(folder.upper("")));
  panel.waitUntilIdle();
  EXPECT_NE(readFileContent("WORK0001.MUS"), "old");
  panel.leave();
}

TEST_F(PanelWindow, WithoutInstrumentIdsResultsAreShorter) {
  addPages();
  PanelOnScreen panel;
  panel.press(&Panel::cmdRun);
  panel.answer(resultOfAnalysis());
  panel.waitUntilIdle();
  panel.press(&Panel::cmdConvert);
  panel.answer(created(folder.upper("")));
  const std::size_t with = readFileContent("WORK0002.MUS").size();
  panel.waitUntilIdle();
  panel.pressAndWait(&Panel::chkShowInstrNumber);
  panel.press(&Panel::cmdConvert);
  panel.answer(created(folder.upper("")));
  constexpr std::size_t numberItem = 28;
  panel.waitUntilIdle();
  EXPECT_EQ(readFileContent("WORK0002.MUS").size(), with - 3 * numberItem);
  panel.leave();
}

}  // namespace
}  // namespace kiv::test
