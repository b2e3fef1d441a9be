#include <array>
#include <cmath>

#include "shell/start_up.h"
#include "shell/version.h"
#include "tests/window/panel_fixture.h"

namespace kiv::test {
namespace {

constexpr double twipsPerPixel = 15;

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

TEST_F(PanelWindow, ShowsEveryControlInItsPositionAndState) {
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

TEST_F(PanelWindow, IsInTheMiddleOfTheScreen) {
  PanelOnScreen panel;
  RECT place{};
  GetWindowRect(panel.window(), &place);
  EXPECT_NEAR(place.left, GetSystemMetrics(SM_CXSCREEN) - place.right, 1);
  EXPECT_NEAR(place.top, GetSystemMetrics(SM_CYSCREEN) - place.bottom, 1);
  panel.leave();
}

TEST_F(PanelWindow, IsWhereTheProfileSays) {
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

TEST_F(PanelWindow, OpensAtTheFirstControlAndTheTabKeyMovesToTheNext) {
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

}  // namespace
}  // namespace kiv::test
