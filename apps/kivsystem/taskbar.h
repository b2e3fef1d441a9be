#pragma once

#include "platform/win32/windows_api.h"

struct ITaskbarList3;

namespace kiv {

/// The program's button in the taskbar, where the system has one that can show progress.
class Taskbar {
 public:
  Taskbar() = default;
  Taskbar(const Taskbar&) = delete;
  Taskbar& operator=(const Taskbar&) = delete;
  ~Taskbar() { release(); }

  /// Releases the system's object, before the thread leaves its library.
  void release();

  /// Shows on the window's button how much of all is done; nothing once all is.
  void showProgress(HWND window, int done, int all);

 private:
  /// False where there is no such button.
  bool find();

  ITaskbarList3* list_ = nullptr;
  bool sought_ = false;
};

}  // namespace kiv
