#include <algorithm>
#include <array>
#include <string>

#include <gtest/gtest.h>

#include "shell/panel_layout.h"

namespace kiv::test {
namespace {

struct Expected {
  const char* name;
  ControlKind kind;
  const char* text;
  const char* tooltip;
  ControlPlace place;  ///< in twips, from the edge of the frame where there is one
  const char* frame;
};

const std::array<Expected, 23> controls = {{
    {"cmdSelectFiles", ControlKind::button, "Select file(s)", "", {120, 120, 1335, 420}, ""},
    {"cmdViewNames", ControlKind::button, "View names", "", {120, 600, 1335, 420}, ""},
    {"Label2",
     ControlKind::label,
     "Push or drop filenames on the button to select input.",
     "",
     {1560, 240, 6855, 195},
     ""},
    {"Frame1", ControlKind::frame, "Function", "", {120, 1080, 8295, 1095}, ""},
    {"Label1",
     ControlKind::label,
     "This program analyzes input files for an identical system structure. Each system must have an identical "
     "instrument layout (called 'consistency').",
     "",
     {120, 240, 8055, 495},
     "Frame1"},
    {"Label4",
     ControlKind::label,
     "It also checks if there are multifile pages (one system on more than one file).",
     "",
     {120, 720, 8055, 195},
     "Frame1"},
    {"Frame3", ControlKind::frame, "Filenames", "", {120, 2280, 8295, 735}, ""},
    {"Label5",
     ControlKind::label,
     "Filename convention requires an incremental numeric portion just left of the suffix period. Multifile pages must "
     "have a single sequence letter starting with A (top of page) between the incremental portion and the suffix "
     "period.",
     "",
     {120, 240, 8055, 405},
     "Frame3"},
    {"Frame2", ControlKind::frame, "Result", "", {120, 3120, 8295, 800}, ""},
    {"Label3",
     ControlKind::label,
     "When there is no consistency or there were multifile pages, the 'convert' option (after analysis) makes one file "
     "per system with identical layout. Rest staves will be inserted for missing instruments.",
     "",
     {120, 240, 8055, 495},
     "Frame2"},
    {"lblWait", ControlKind::label, "Wait for ", "", {120, 4080, 8295, 255}, ""},
    {"Label7",
     ControlKind::label,
     "The analyze function establishes if the iinput requires conversion. If so, the convert option becomes enabled.",
     "",
     {120, 4440, 8295, 195},
     ""},
    {"Label8",
     ControlKind::label,
     "This program is called invisibly by KivSplit and KivScore2XML.",
     "",
     {120, 4680, 6255, 195},
     ""},
    {"cmdRun", ControlKind::button, "Analyze", "", {7080, 4800, 1335, 420}, ""},
    {"Label6", ControlKind::label, "First conversion result file name", "", {120, 5040, 2055, 255}, ""},
    {"txtFirstResultFile",
     ControlKind::textBox,
     "",
     "Click to select a different folder. The first output file is always WORK0001.MUS ",
     {120, 5280, 6855, 285},
     ""},
    {"cmdConvert", ControlKind::button, "Convert", "", {7080, 5280, 1335, 420}, ""},
    {"chkOverwrite", ControlKind::checkBox, "Overwrite", "", {2160, 5640, 1815, 192}, ""},
    {"chkDebug", ControlKind::checkBox, "Trace", "Visible to developer only.", {4200, 5640, 855, 192}, ""},
    {"cmdReturn", ControlKind::button, "Return", "", {7080, 5760, 1335, 420}, ""},
    {"cmdSortInstrument",
     ControlKind::button,
     "Sort Instrument",
     "This function sorts the selected files per instrument - top to bottom",
     {120, 5760, 1815, 375},
     ""},
    {"chkShowInstrNumber", ControlKind::checkBox, "Show instrument id.", "", {2160, 5880, 2055, 195}, ""},
    {"chkIggZeroInstrId", ControlKind::checkBox, "Ignore Zero Instr Id staves", "", {4200, 5880, 2775, 195}, ""},
}};

const ControlLayout* layoutOf(const std::string& name) {
  const auto layout = panelLayout();
  const auto found =
      std::find_if(layout.begin(), layout.end(), [&](const ControlLayout& control) { return control.name == name; });
  return found == layout.end() ? nullptr : &*found;
}

std::string frameOf(const ControlLayout& control) {
  for (const ControlLayout& other : panelLayout()) {
    if (control.frame != nullptr && other.control == control.frame) {
      return other.name;
    }
  }
  return "";
}

TEST(PanelControls, HaveTheirTextsAndTooltips) {
  const Panel panel;
  for (const Expected& expected : controls) {
    SCOPED_TRACE(expected.name);
    const ControlLayout* layout = layoutOf(expected.name);
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ((panel.*layout->control).text, expected.text);
    EXPECT_EQ((panel.*layout->control).tooltip, expected.tooltip);
  }
  EXPECT_EQ(panel.title, "[...]");
}

TEST(PanelControls, AreInTheirPositions) {
  for (const Expected& expected : controls) {
    SCOPED_TRACE(expected.name);
    const ControlLayout* layout = layoutOf(expected.name);
    ASSERT_NE(layout, nullptr);
    EXPECT_EQ(layout->kind, expected.kind);
    EXPECT_EQ(layout->place.left, expected.place.left);
    EXPECT_EQ(layout->place.top, expected.place.top);
    EXPECT_EQ(layout->place.width, expected.place.width);
    EXPECT_EQ(layout->place.height, expected.place.height);
    EXPECT_EQ(frameOf(*layout), expected.frame);
  }
  EXPECT_EQ(panelWidth, 8580);
  EXPECT_EQ(panelHeight, 6255);
}

}  // namespace
}  // namespace kiv::test
