#include "tests/window/started_program.h"

#include <algorithm>
#include <array>
#include <utility>

#include <gtest/gtest.h>
#include <tlhelp32.h>

#include "platform/win32/text.h"

namespace kiv::test {
namespace {

constexpr DWORD pollMilliseconds = 20;
constexpr ULONGLONG patienceMilliseconds = 60'000;
constexpr UINT answerMilliseconds = 10'000;

/// The file for a stream of a started program; none for "".
Handle streamFile(const std::string& name) {
  if (name.empty()) {
    return Handle();
  }
  SECURITY_ATTRIBUTES inheritable{sizeof(inheritable), nullptr, TRUE};
  return Handle(CreateFileA(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inheritable, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL, nullptr));
}

std::vector<HWND> childrenOf(HWND window, const std::string& className) {
  std::vector<HWND> children;
  for (HWND child = GetWindow(window, GW_CHILD); child != nullptr; child = GetWindow(child, GW_HWNDNEXT)) {
    if (classOf(child) == className && IsWindowVisible(child) != FALSE) {
      children.push_back(child);
    }
  }
  return children;
}

bool isIcon(HWND label) {
  return (GetWindowLongA(label, GWL_STYLE) & SS_TYPEMASK) == SS_ICON;
}

std::string captionOf(HWND button) {
  std::string caption = textOf(button);
  caption.erase(std::remove(caption.begin(), caption.end(), '&'), caption.end());
  return caption;
}

std::vector<HWND> buttonsOf(HWND box) {
  std::vector<HWND> buttons = childrenOf(box, "Button");
  const auto left = [](HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return place.left;
  };
  std::sort(buttons.begin(), buttons.end(), [&](HWND a, HWND b) { return left(a) < left(b); });
  return buttons;
}

/// The number of a child process with this program name, 0 when there is none.
DWORD childNamed(DWORD parent, const std::string& programName) {
  const Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32 entry{};
  entry.dwSize = sizeof(entry);
  for (BOOL more = Process32First(snapshot.get(), &entry); more != FALSE;
       more = Process32Next(snapshot.get(), &entry)) {
    if (entry.th32ParentProcessID == parent && lstrcmpiA(entry.szExeFile, programName.c_str()) == 0) {
      return entry.th32ProcessID;
    }
  }
  return 0;
}

}  // namespace

std::string classOf(HWND window) {
  std::array<char, 256> name{};
  return {name.data(), static_cast<std::size_t>(GetClassNameA(window, name.data(), static_cast<int>(name.size())))};
}

std::string textOf(HWND window) {
  std::array<char, 4096> text{};
  DWORD_PTR length = 0;
  SendMessageTimeoutA(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()), SMTO_NORMAL,
                      answerMilliseconds, &length);
  return {text.data(), static_cast<std::size_t>(length)};
}

std::vector<HWND> windowsOf(DWORD process) {
  struct Search {
    DWORD process;
    std::vector<HWND> windows;
  };
  Search search{process, {}};
  const auto visit = [](HWND window, LPARAM parameter) -> BOOL {
    auto& found = *reinterpret_cast<Search*>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner == found.process && IsWindowVisible(window) != FALSE) {
      found.windows.push_back(window);
    }
    return TRUE;
  };
  EnumWindows(visit, reinterpret_cast<LPARAM>(&search));
  return search.windows;
}

std::optional<Box> boxOf(DWORD process) {
  for (HWND window : windowsOf(process)) {
    if (classOf(window) != "#32770") {
      continue;
    }
    Box box{window, textOf(window), "", {}};
    for (HWND label : childrenOf(window, "Static")) {
      box.text += isIcon(label) ? "" : textOf(label);
    }
    for (HWND button : buttonsOf(window)) {
      box.buttons.push_back(captionOf(button));
    }
    return box;
  }
  return std::nullopt;
}

bool click(const Box& box, const std::string& caption) {
  for (HWND button : buttonsOf(box.window)) {
    if (captionOf(button) == caption) {
      PostMessageA(button, BM_CLICK, 0, 0);
      return true;
    }
  }
  return false;
}

WatchedProcess::~WatchedProcess() {
  if (process_.isOpen() && WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT) {
    TerminateProcess(process_.get(), 99);
    WaitForSingleObject(process_.get(), INFINITE);
  }
}

void WatchedProcess::watchWindows() {
  for (HWND window : windowsOf(number_)) {
    const std::string name = classOf(window);
    if (!name.empty()) {  // the window may be gone by now
      windowClasses_.insert(name);
    }
  }
}

bool WatchedProcess::waitUntil(const std::function<bool()>& condition) {
  const ULONGLONG latest = GetTickCount64() + patienceMilliseconds;
  while (!condition()) {
    watchWindows();
    if (GetTickCount64() > latest) {
      return false;
    }
    if (WaitForSingleObject(process_.get(), pollMilliseconds) != WAIT_TIMEOUT) {
      return condition();
    }
  }
  watchWindows();
  return true;
}

std::optional<Box> WatchedProcess::nextBox() {
  std::optional<Box> box;
  const bool found = waitUntil([&] { return (box = boxOf(number_)).has_value(); });
  EXPECT_TRUE(found) << "no message box came up";
  return box;
}

void WatchedProcess::close(const Box& box, const std::string& caption) {
  EXPECT_TRUE(click(box, caption)) << "no button " << caption;
  waitUntil([&] { return IsWindow(box.window) == FALSE; });
  EXPECT_FALSE(IsWindow(box.window)) << "the box stays: " << box.text;
}

std::optional<std::int32_t> WatchedProcess::exitCode() {
  waitUntil([] { return false; });
  DWORD code = 0;
  if (WaitForSingleObject(process_.get(), 0) != WAIT_OBJECT_0 || GetExitCodeProcess(process_.get(), &code) == FALSE) {
    const auto box = boxOf(number_);
    ADD_FAILURE() << "the program does not end" << (box ? "; it shows " + box->text : "");
    return std::nullopt;
  }
  return static_cast<std::int32_t>(code);
}

WatchedProcess start(const std::string& commandLine, const std::string& output, const std::string& error) {
  const Handle outputFile = streamFile(output);
  const Handle errorFile = streamFile(error);
  STARTUPINFOA startup{};
  startup.cb = sizeof(startup);
  if (outputFile.isOpen() || errorFile.isOpen()) {
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = outputFile.get();
    startup.hStdError = errorFile.get();
  }
  std::string line = commandLine;
  PROCESS_INFORMATION started{};
  // A console would be a process of its own that may outlive the program, and with it the inherited files.
  EXPECT_TRUE(CreateProcessA(nullptr, line.data(), nullptr, nullptr, TRUE, DETACHED_PROCESS, nullptr, nullptr, &startup,
                             &started))
      << commandLine << ": " << lastFailure();
  const Handle thread(started.hThread);
  return {Handle(started.hProcess), started.dwProcessId};
}

std::optional<WatchedProcess> startedBy(WatchedProcess& process, const std::string& programName) {
  DWORD child = 0;
  if (!process.waitUntil([&] { return (child = childNamed(process.number(), programName)) != 0; })) {
    ADD_FAILURE() << programName << " was not started";
    return std::nullopt;
  }
  Handle handle(OpenProcess(SYNCHRONIZE | PROCESS_QUERY_INFORMATION | PROCESS_TERMINATE, FALSE, child));
  EXPECT_TRUE(handle.isOpen()) << programName;
  return WatchedProcess(std::move(handle), child);
}

}  // namespace kiv::test
