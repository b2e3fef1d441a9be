#include "shell/panel_layout.h"

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

std::vector<std::string> names() {
  std::vector<std::string> list;
  for (const ControlLayout& control : panelLayout()) {
    list.emplace_back(control.name);
  }
  return list;
}

const ControlLayout& layoutOf(const std::string& name) {
  const auto found = std::find_if(panelLayout().begin(), panelLayout().end(),
                                  [&](const ControlLayout& control) { return control.name == name; });
  return *found;
}

TEST(PanelLayout, TheTabKeyGoesThroughTheButtonsFirst) {
  const std::vector<std::string> list = names();
  EXPECT_EQ(std::vector(list.begin(), list.begin() + 5),
            (std::vector<std::string>{"cmdSelectFiles", "cmdViewNames", "cmdRun", "cmdReturn", "cmdConvert"}));
  EXPECT_EQ(list.size(), 23U);
}

TEST(PanelLayout, TheLabelOfTheTextBoxComesRightBeforeIt) {
  const std::vector<std::string> list = names();
  const auto box = std::find(list.begin(), list.end(), "txtFirstResultFile");
  EXPECT_EQ(*(box - 1), "Label6");
}

TEST(PanelLayout, ControlsInAFrameAreWithinIt) {
  for (const ControlLayout& control : panelLayout()) {
    if (control.frame == nullptr) {
      continue;
    }
    const auto frame = std::find_if(panelLayout().begin(), panelLayout().end(),
                                    [&](const ControlLayout& other) { return other.control == control.frame; });
    const ControlPlace place = placeInWindow(control);
    const ControlPlace around = placeInWindow(*frame);
    EXPECT_EQ(place.left, around.left + control.place.left) << control.name;
    EXPECT_EQ(place.top, around.top + control.place.top) << control.name;
    EXPECT_LE(place.top + place.height, around.top + around.height) << control.name;
    EXPECT_LE(place.left + place.width, around.left + around.width) << control.name;
  }
}

TEST(PanelLayout, EverythingIsInTheWindow) {
  for (const ControlLayout& control : panelLayout()) {
    const ControlPlace place = placeInWindow(control);
    EXPECT_LE(place.left + place.width, panelWidth) << control.name;
    EXPECT_LE(place.top + place.height, panelHeight) << control.name;
  }
}

TEST(PanelLayout, NoTwoControlsOverlapByMoreThanAPixelButFramesAndWhatTheyHold) {
  constexpr int pixel = 15;
  for (const ControlLayout& one : panelLayout()) {
    for (const ControlLayout& other : panelLayout()) {
      if (&one == &other || one.kind == ControlKind::frame || other.kind == ControlKind::frame) {
        continue;
      }
      const ControlPlace a = placeInWindow(one);
      const ControlPlace b = placeInWindow(other);
      const bool apart = a.left + a.width <= b.left + pixel || b.left + b.width <= a.left + pixel ||
                         a.top + a.height <= b.top + pixel || b.top + b.height <= a.top + pixel;
      EXPECT_TRUE(apart) << one.name << " and " << other.name;
    }
  }
}

TEST(PanelLayout, InitialStates) {
  const Panel panel;
  const std::map<std::string, bool> hidden = {{"lblWait", true}, {"chkDebug", true}, {"cmdSortInstrument", true}};
  const std::map<std::string, bool> checked = {{"chkOverwrite", true}, {"chkShowInstrNumber", true}};
  for (const ControlLayout& control : panelLayout()) {
    const Control& state = panel.*control.control;
    EXPECT_EQ(!state.visible, hidden.contains(control.name)) << control.name;
    EXPECT_EQ(state.checked, checked.contains(control.name)) << control.name;
    EXPECT_EQ(state.enabled, std::string(control.name) != "cmdConvert") << control.name;
  }
}

TEST(PanelLayout, TheFrameOfAControlIsNamed) {
  EXPECT_EQ(layoutOf("Label1").frame, &Panel::frame1);
  EXPECT_EQ(layoutOf("Label4").frame, &Panel::frame1);
  EXPECT_EQ(layoutOf("Label5").frame, &Panel::frame3);
  EXPECT_EQ(layoutOf("Label3").frame, &Panel::frame2);
}

}  // namespace
}  // namespace kiv::test
