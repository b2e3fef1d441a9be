#include "tests/window/companion_dialog.h"

#include <array>

#include <commctrl.h>
#include <gtest/gtest.h>

#include "platform/win32/text.h"
#include "tests/window/work_folder.h"

namespace kiv::test {
namespace {

constexpr int openButton = IDOK;
constexpr int cancelButton = IDCANCEL;
constexpr int nameEdit = 1152;
constexpr int filterBox = 1136;
constexpr UINT answerMilliseconds = 10'000;

LRESULT ask(HWND window, UINT message, WPARAM wide, LPARAM narrow) {
  DWORD_PTR answer = 0;
  SendMessageTimeoutW(window, message, wide, narrow, SMTO_NORMAL, answerMilliseconds, &answer);
  return static_cast<LRESULT>(answer);
}

struct Search {
  std::string className;
  int identifier;
  HWND found;
};

BOOL CALLBACK visit(HWND window, LPARAM parameter) {
  auto& search = *reinterpret_cast<Search*>(parameter);
  if (GetDlgCtrlID(window) == search.identifier && classOf(window) == search.className) {
    search.found = window;
  }
  return search.found == nullptr;
}

}  // namespace

std::string companionCall(const std::string& program, const std::string& fields) {
  return "\"" + builtFile("..\\..\\apps\\companions\\" + program + ".EXE") + "\" " + fields;
}

void expectLastBox(WatchedProcess& program, const std::string& title, const std::string& text, std::int32_t exitCode) {
  const auto box = program.nextBox();
  ASSERT_TRUE(box);
  EXPECT_EQ(box->title, title);
  EXPECT_EQ(box->text, text);
  EXPECT_EQ(box->buttons, std::vector<std::string>{"OK"});
  program.close(*box, "OK");
  EXPECT_EQ(program.exitCode(), exitCode);
}

CompanionDialog::CompanionDialog(WatchedProcess& program) : program_(program) {
  EXPECT_TRUE(program.waitUntil([this] { return isReady(); })) << "no dialog came up";
}

HWND CompanionDialog::child(const std::string& className, int identifier) const {
  Search search{className, identifier, nullptr};
  EnumChildWindows(window_, visit, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

/// The list of files is the last part to come. Until then, the dialog may still write into its edit.
bool CompanionDialog::isReady() {
  for (HWND window : windowsOf(program_.number())) {
    window_ = window;
    HWND list = child("SysListView32", 1);
    if (list != nullptr && IsWindowVisible(list) != FALSE && IsWindowEnabled(child("Button", openButton)) != FALSE) {
      return true;
    }
  }
  return false;
}

std::string CompanionDialog::title() const {
  return textOf(window_);
}

std::string CompanionDialog::filter() const {
  return textOf(child("ComboBox", filterBox));
}

bool CompanionDialog::allowsSeveral() const {
  return (GetWindowLongW(child("SysListView32", 1), GWL_STYLE) & LVS_SINGLESEL) == 0;
}

void CompanionDialog::expectEntries(int count) {
  LRESULT entries = -1;
  program_.waitUntil([&] { return (entries = ask(child("SysListView32", 1), LVM_GETITEMCOUNT, 0, 0)) == count; });
  EXPECT_EQ(entries, count);
}

void CompanionDialog::choose(const std::wstring& typed) {
  ask(child("Edit", nameEdit), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(typed.c_str()));
  clickAndWait(openButton);
}

void CompanionDialog::choose(const std::string& typed) {
  choose(wide(typed));
}

void CompanionDialog::clickCancel() {
  clickAndWait(cancelButton);
}

void CompanionDialog::clickAndWait(int button) {
  PostMessageW(child("Button", button), BM_CLICK, 0, 0);
  program_.waitUntil([this] { return IsWindow(window_) == FALSE; });
  EXPECT_FALSE(IsWindow(window_)) << "the dialog stays";
}

}  // namespace kiv::test
