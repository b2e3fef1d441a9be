#include "shell/panel_layout.h"

#include <algorithm>
#include <array>

namespace kiv {
namespace {

using enum ControlKind;

constexpr std::array<ControlLayout, 23> layout = {{
    {"cmdSelectFiles", &Panel::cmdSelectFiles, button, {120, 120, 1335, 420}},
    {"cmdViewNames", &Panel::cmdViewNames, button, {120, 600, 1335, 420}},
    {"cmdRun", &Panel::cmdRun, button, {7080, 4800, 1335, 420}},
    {"cmdReturn", &Panel::cmdReturn, button, {7080, 5760, 1335, 420}},
    {"cmdConvert", &Panel::cmdConvert, button, {7080, 5280, 1335, 420}},
    {"Label2", &Panel::label2, label, {1560, 240, 6855, 195}},
    {"Frame1", &Panel::frame1, frame, {120, 1080, 8295, 1095}},
    {"Label1", &Panel::label1, label, {120, 240, 8055, 495}, &Panel::frame1},
    {"Label4", &Panel::label4, label, {120, 720, 8055, 195}, &Panel::frame1},
    {"Frame3", &Panel::frame3, frame, {120, 2280, 8295, 735}},
    {"Label5", &Panel::label5, label, {120, 240, 8055, 405}, &Panel::frame3},
    {"Frame2", &Panel::frame2, frame, {120, 3120, 8295, 800}},
    {"Label3", &Panel::label3, label, {120, 240, 8055, 495}, &Panel::frame2},
    {"lblWait", &Panel::lblWait, label, {120, 4080, 8295, 255}},
    {"Label7", &Panel::label7, label, {120, 4440, 8295, 195}},
    {"Label8", &Panel::label8, label, {120, 4680, 6255, 195}},
    {"Label6", &Panel::label6, label, {120, 5040, 2055, 255}},
    {"txtFirstResultFile", &Panel::txtFirstResultFile, textBox, {120, 5280, 6855, 285}},
    {"chkOverwrite", &Panel::chkOverwrite, checkBox, {2160, 5640, 1815, 192}},
    {"chkDebug", &Panel::chkDebug, checkBox, {4200, 5640, 855, 192}},
    {"cmdSortInstrument", &Panel::cmdSortInstrument, button, {120, 5760, 1815, 375}},
    {"chkShowInstrNumber", &Panel::chkShowInstrNumber, checkBox, {2160, 5880, 2055, 195}},
    {"chkIggZeroInstrId", &Panel::chkIggZeroInstrId, checkBox, {4200, 5880, 2775, 195}},
}};

}  // namespace

std::span<const ControlLayout> panelLayout() {
  return layout;
}

ControlPlace placeInWindow(const ControlLayout& control) {
  ControlPlace place = control.place;
  const auto frame = std::find_if(layout.begin(), layout.end(), [&](const ControlLayout& other) {
    return control.frame != nullptr && other.control == control.frame;
  });
  if (frame != layout.end()) {
    place.left += frame->place.left;
    place.top += frame->place.top;
  }
  return place;
}

}  // namespace kiv
