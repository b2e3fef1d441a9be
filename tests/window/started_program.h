#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "platform/win32/handle.h"

namespace kiv::test {

/// A message box on the screen.
struct Box {
  HWND window = nullptr;
  std::string title;
  std::string text;
  std::vector<std::string> buttons;  ///< their captions, from the left
};

/// The box that a process shows, nullopt when it shows none.
std::optional<Box> boxOf(DWORD process);
/// Clicks the button with this caption. False when there is none.
bool click(const Box& box, const std::string& caption);

/// A process that the test started, on its own or through another one.
class WatchedProcess {
 public:
  WatchedProcess(Handle process, DWORD number) : process_(std::move(process)), number_(number) {}
  WatchedProcess(WatchedProcess&&) = default;
  WatchedProcess(const WatchedProcess&) = delete;
  WatchedProcess& operator=(const WatchedProcess&) = delete;
  WatchedProcess& operator=(WatchedProcess&&) = delete;
  ~WatchedProcess();

  DWORD number() const { return number_; }
  /// Polls until the condition holds. False when the process ends, or takes too long, before it does.
  bool waitUntil(const std::function<bool()>& condition);
  /// The next message box; nullopt, with a failure, when the process ends without one.
  std::optional<Box> nextBox();
  /// Clicks the button and waits until the box is gone.
  void close(const Box& box, const std::string& caption);
  /// Waits for the end. nullopt, with a failure, when it does not come.
  std::optional<std::int32_t> exitCode();
  /// The classes of all windows that were seen on the screen while this waited.
  const std::set<std::string>& windowClasses() const { return windowClasses_; }

 private:
  void watchWindows();

  Handle process_;
  DWORD number_;
  std::set<std::string> windowClasses_;
};

/// Starts a command line in the current folder. The two streams go to the files named, if any.
WatchedProcess start(const std::string& commandLine, const std::string& output = "", const std::string& error = "");

/// Waits for a program that the process starts in its turn, known by its file name.
std::optional<WatchedProcess> startedBy(WatchedProcess& process, const std::string& programName);

/// The windows of a process that are on the screen.
std::vector<HWND> windowsOf(DWORD process);
std::string classOf(HWND window);
/// The window's text, of another process's controls too.
std::string textOf(HWND window);

}  // namespace kiv::test
