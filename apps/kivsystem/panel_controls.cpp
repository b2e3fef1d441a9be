#include "apps/kivsystem/panel_controls.h"

#include <algorithm>
#include <utility>

#include <commctrl.h>

#include "apps/kivsystem/dpi.h"

namespace kiv {
namespace {

constexpr int firstId = 100;
constexpr int pointsPerInch = 72;
constexpr int waitPoints = 12;
constexpr double widestTooltip = 6000;  // twips; longer ones get more lines

const char* classOf(ControlKind kind) {
  switch (kind) {
    case ControlKind::label:
      return "STATIC";
    case ControlKind::textBox:
      return "EDIT";
    case ControlKind::button:
    case ControlKind::checkBox:
    case ControlKind::frame:
      break;
  }
  return "BUTTON";
}

DWORD styleOf(const ControlLayout& layout) {
  switch (layout.kind) {
    case ControlKind::button:
      return WS_TABSTOP | BS_PUSHBUTTON;
    case ControlKind::checkBox:
      return WS_TABSTOP | BS_AUTOCHECKBOX;
    case ControlKind::frame:
      return BS_GROUPBOX;
    case ControlKind::textBox:
      return WS_TABSTOP | ES_AUTOHSCROLL;
    case ControlKind::label:
      break;
  }
  return SS_NOPREFIX | (layout.control == &Panel::lblWait ? SS_CENTER : SS_LEFT);
}

DWORD frameStyleOf(ControlKind kind) {
  return kind == ControlKind::textBox ? WS_EX_CLIENTEDGE : 0;
}

}  // namespace

Font::Font(const char* face, int height, int weight)
    : handle_(CreateFontA(-height, 0, 0, 0, weight, FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS,
                          CLIP_DEFAULT_PRECIS, DEFAULT_QUALITY, DEFAULT_PITCH, face)) {}

Font::Font(Font&& other) noexcept : handle_(std::exchange(other.handle_, nullptr)) {}

Font& Font::operator=(Font&& other) noexcept {
  std::swap(handle_, other.handle_);
  return *this;
}

Font::~Font() {
  if (handle_ != nullptr) {
    DeleteObject(handle_);
  }
}

namespace {

std::string textOf(HWND window) {
  std::string text(static_cast<std::size_t>(GetWindowTextLengthA(window)) + 1, '\0');
  text.resize(static_cast<std::size_t>(GetWindowTextA(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

int pixelsOf(int points, int dpi) {
  return MulDiv(points, dpi, pointsPerInch);
}

/// Whether the label's text, in lines as wide as the label, is no higher than it.
bool fits(HDC context, const ControlLayout& layout, const std::string& text, int dpi) {
  const ControlPlace at = placeInWindow(layout);
  RECT bounds{0, 0, toPixels(at.left + at.width, dpi) - toPixels(at.left, dpi), 0};
  DrawTextA(context, text.c_str(), -1, &bounds, DT_CALCRECT | DT_WORDBREAK | DT_NOPREFIX | DT_EXPANDTABS);
  return bounds.bottom <= toPixels(at.top + at.height, dpi) - toPixels(at.top, dpi);
}

/// The dialog font in its normal size, or in the largest smaller one in which every label fits.
Font fittingFont(HWND control, int dpi) {
  constexpr int standardPoints = 8;
  constexpr int leastPoints = 5;
  const Panel texts;
  const HDC context = GetDC(control);
  Font font;
  for (int height = pixelsOf(standardPoints, dpi); height >= pixelsOf(leastPoints, dpi); --height) {
    font = Font("MS Shell Dlg", height, FW_NORMAL);
    const HGDIOBJ before = SelectObject(context, font.handle());
    const bool allFit = std::all_of(panelLayout().begin(), panelLayout().end(), [&](const ControlLayout& layout) {
      const bool dialogText = layout.kind == ControlKind::label && layout.control != &Panel::lblWait;
      return !dialogText || fits(context, layout, (texts.*layout.control).text, dpi);
    });
    SelectObject(context, before);
    if (allFit) {
      break;
    }
  }
  ReleaseDC(control, context);
  return font;
}

}  // namespace

void PanelControls::create(HWND parent, const Panel& panel, int dpi) {
  int id = firstId;
  for (const ControlLayout& layout : panelLayout()) {
    const Control& state = panel.*layout.control;
    const DWORD style = WS_CHILD | styleOf(layout);
    HWND window =
        CreateWindowExA(frameStyleOf(layout.kind), classOf(layout.kind), state.text.c_str(), style, 0, 0, 0, 0, parent,
                        reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), GetModuleHandleA(nullptr), nullptr);
    Control hidden = state;
    hidden.tooltip.clear();
    hidden.enabled = true;
    hidden.visible = false;
    hidden.checked = false;
    controls_.push_back({&layout, window, hidden});
    ++id;
  }
  createTooltips(parent);
  place(dpi);
  show(panel);
}

void PanelControls::place(int dpi) {
  Font font = fittingFont(controls_.front().window, dpi);
  Font waitFont("Arial", pixelsOf(waitPoints, dpi), FW_BOLD);
  for (const Shown& shown : controls_) {
    const ControlPlace at = placeInWindow(*shown.layout);
    const int left = toPixels(at.left, dpi);
    const int top = toPixels(at.top, dpi);
    SetWindowPos(shown.window, nullptr, left, top, toPixels(at.left + at.width, dpi) - left,
                 toPixels(at.top + at.height, dpi) - top, SWP_NOZORDER | SWP_NOACTIVATE);
    const bool wait = shown.layout->control == &Panel::lblWait;
    SendMessageA(shown.window, WM_SETFONT, reinterpret_cast<WPARAM>(wait ? waitFont.handle() : font.handle()), TRUE);
  }
  SendMessageA(tooltips_, TTM_SETMAXTIPWIDTH, 0, toPixels(widestTooltip, dpi));
  font_ = std::move(font);
  waitFont_ = std::move(waitFont);
}

void PanelControls::show(const Panel& panel) {
  for (Shown& shown : controls_) {
    const Control& state = panel.*(shown.layout->control);
    if (shown.state != state) {
      update(shown, state);
    }
  }
}

void PanelControls::update(Shown& shown, const Control& state) const {
  const Control before = std::exchange(shown.state, state);
  if (before.text != state.text) {
    SetWindowTextA(shown.window, state.text.c_str());
  }
  if (before.tooltip != state.tooltip) {
    showTooltip(shown);
  }
  if (before.checked != state.checked) {
    SendMessageA(shown.window, BM_SETCHECK, state.checked ? BST_CHECKED : BST_UNCHECKED, 0);
  }
  if (before.enabled != state.enabled) {
    EnableWindow(shown.window, state.enabled ? TRUE : FALSE);
  }
  if (before.visible != state.visible) {
    ShowWindow(shown.window, state.visible ? SW_SHOW : SW_HIDE);
  }
}

void PanelControls::createTooltips(HWND parent) {
  tooltips_ = CreateWindowExA(WS_EX_TOPMOST, TOOLTIPS_CLASSA, nullptr, WS_POPUP | TTS_NOPREFIX | TTS_ALWAYSTIP, 0, 0, 0,
                              0, parent, nullptr, GetModuleHandleA(nullptr), nullptr);
}

void PanelControls::showTooltip(const Shown& shown) const {
  TOOLINFOA tool{};
  tool.cbSize = TTTOOLINFOA_V2_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = GetParent(shown.window);
  tool.uId = reinterpret_cast<UINT_PTR>(shown.window);
  SendMessageA(tooltips_, TTM_DELTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
  std::string text = shown.state.tooltip;
  tool.lpszText = text.data();
  if (!text.empty()) {
    SendMessageA(tooltips_, TTM_ADDTOOLA, 0, reinterpret_cast<LPARAM>(&tool));
  }
}

void PanelControls::readBack(int id, Panel& panel) {
  const ControlLayout* layout = layoutOf(id);
  if (layout == nullptr) {
    return;
  }
  Shown& shown = controls_[static_cast<std::size_t>(id - firstId)];
  if (layout->kind == ControlKind::textBox) {
    shown.state.text = textOf(shown.window);
    (panel.*(layout->control)).text = shown.state.text;
  } else if (layout->kind == ControlKind::checkBox) {
    shown.state.checked = SendMessageA(shown.window, BM_GETCHECK, 0, 0) == BST_CHECKED;
    (panel.*(layout->control)).checked = shown.state.checked;
  }
}

void PanelControls::undo(int id) const {
  const Shown& shown = controls_[static_cast<std::size_t>(id - firstId)];
  if (shown.layout->kind == ControlKind::checkBox) {
    SendMessageA(shown.window, BM_SETCHECK, shown.state.checked ? BST_CHECKED : BST_UNCHECKED, 0);
  } else if (shown.layout->kind == ControlKind::textBox && textOf(shown.window) != shown.state.text) {
    SetWindowTextA(shown.window, shown.state.text.c_str());
  }
}

const ControlLayout* PanelControls::layoutOf(int id) const {
  const auto i = static_cast<std::size_t>(id - firstId);
  return id >= firstId && i < controls_.size() ? controls_[i].layout : nullptr;
}

HWND PanelControls::window(Control Panel::*control) const {
  const auto shown = std::find_if(controls_.begin(), controls_.end(),
                                  [&](const Shown& candidate) { return candidate.layout->control == control; });
  return shown == controls_.end() ? nullptr : shown->window;
}

HWND PanelControls::first() const {
  const auto shown = std::find_if(controls_.begin(), controls_.end(), [](const Shown& candidate) {
    const bool tabStop = (GetWindowLongA(candidate.window, GWL_STYLE) & WS_TABSTOP) != 0;
    return tabStop && candidate.state.enabled && candidate.state.visible;
  });
  return shown == controls_.end() ? nullptr : shown->window;
}

}  // namespace kiv
