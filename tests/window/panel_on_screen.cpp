#include "tests/window/panel_on_screen.h"

#include <array>
#include <utility>

#include <commctrl.h>
#include <gtest/gtest.h>

#include "platform/win32/windows_api.h"

namespace kiv::test {
namespace {

constexpr UINT patience = 10'000;  // milliseconds
constexpr int firstId = 100;

int idOf(Control Panel::*control) {
  int id = firstId;
  for (const ControlLayout& layout : panelLayout()) {
    if (layout.control == control) {
      return id;
    }
    ++id;
  }
  return 0;
}

LRESULT ask(HWND window, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
  DWORD_PTR result = 0;
  SendMessageTimeoutA(window, message, wParam, lParam, SMTO_NORMAL, patience, &result);
  return static_cast<LRESULT>(result);
}

/// Memory in another process.
class ForeignMemory {
 public:
  ForeignMemory(HANDLE process, std::size_t size)
      : process_(process), place_(VirtualAllocEx(process, nullptr, size, MEM_COMMIT, PAGE_READWRITE)) {}
  ForeignMemory(const ForeignMemory&) = delete;
  ForeignMemory& operator=(const ForeignMemory&) = delete;
  ~ForeignMemory() { VirtualFreeEx(process_, place_, 0, MEM_RELEASE); }

  char* place() const { return static_cast<char*>(place_); }
  void write(const void* from, std::size_t size) const { WriteProcessMemory(process_, place_, from, size, nullptr); }
  void read(void* to, std::size_t size, std::size_t offset) const {
    ReadProcessMemory(process_, place() + offset, to, size, nullptr);
  }

 private:
  HANDLE process_;
  void* place_;
};

HWND tooltipsOf(DWORD process) {
  HWND found = nullptr;
  while ((found = FindWindowExA(nullptr, found, TOOLTIPS_CLASSA, nullptr)) != nullptr) {
    DWORD owner = 0;
    GetWindowThreadProcessId(found, &owner);
    if (owner == process) {
      return found;
    }
  }
  return nullptr;
}

}  // namespace

PanelOnScreen::PanelOnScreen(const std::string& commandLine)
    : PanelOnScreen(start("\"" + builtFile("..\\..\\apps\\kivsystem\\KivSystem.exe") + "\" " + commandLine)) {}

PanelOnScreen::PanelOnScreen(WatchedProcess process) : process_(std::move(process)) {
  process_.waitUntil([this] {
    for (HWND window : windowsOf(process_.number())) {
      if (classOf(window) == "frmKivSystem") {
        window_ = window;
      }
    }
    return window_ != nullptr || boxOf(process_.number()).has_value();
  });
}

HWND PanelOnScreen::control(Control Panel::*control) const {
  return GetDlgItem(window_, idOf(control));
}

std::string PanelOnScreen::textOf(Control Panel::*control) const {
  return test::textOf(this->control(control));
}

std::string PanelOnScreen::tooltipOf(Control Panel::*control) const {
  const Handle process(
      OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, process_.number()));
  std::array<char, 1024> text{};
  TOOLINFOA tool{};
  const ForeignMemory memory(process.get(), sizeof tool + text.size());
  tool.cbSize = TTTOOLINFOA_V2_SIZE;
  tool.hwnd = window_;
  tool.uId = reinterpret_cast<UINT_PTR>(this->control(control));
  tool.lpszText = memory.place() + sizeof tool;
  memory.write(&tool, sizeof tool);
  constexpr WPARAM longest = 1000;
  ask(tooltipsOf(process_.number()), TTM_GETTEXTA, longest, reinterpret_cast<LPARAM>(memory.place()));
  memory.read(text.data(), text.size() - 1, sizeof tool);
  return text.data();
}

bool PanelOnScreen::isChecked(Control Panel::*control) const {
  return ask(this->control(control), BM_GETCHECK) == BST_CHECKED;
}

RECT PanelOnScreen::placeOf(Control Panel::*control) const {
  RECT place{};
  GetWindowRect(this->control(control), &place);
  MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&place), 2);
  return place;
}

void PanelOnScreen::click(Control Panel::*control) const {
  PostMessageA(this->control(control), BM_CLICK, 0, 0);
}

void PanelOnScreen::clickAndWait(Control Panel::*control) const {
  ask(this->control(control), BM_CLICK);
}

void PanelOnScreen::type(const std::string& text) const {
  DWORD_PTR result = 0;
  SendMessageTimeoutA(control(&Panel::txtFirstResultFile), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()),
                      SMTO_NORMAL, patience, &result);
}

void PanelOnScreen::answer(const std::string& text, const std::string& button) {
  const auto box = process_.nextBox();
  ASSERT_TRUE(box);
  EXPECT_EQ(box->title, "KivSystem");
  EXPECT_EQ(box->text, text);
  process_.close(*box, button);
}

void PanelOnScreen::waitUntilIdle() {
  EXPECT_TRUE(waitUntil([this] { return GetPropA(window_, "KivSystem.Busy") == nullptr; }));
}

void PanelOnScreen::leave() {
  click(&Panel::cmdReturn);
  EXPECT_EQ(process_.exitCode(), 0);
}

void bringSettings(const WorkFolder& folder) {
  writeFile("KIVPROJ.PRO", "* settings\r\nMusDirectory=" + folder.path() + "\r\nNamesFile=" + folder / "NAMES.TXT\r\n");
}

}  // namespace kiv::test
