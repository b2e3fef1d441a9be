#include <new>

#include "apps/kivsystem/out_of_memory.h"
#include "apps/kivsystem/panel_window.h"
#include "platform/win32/command_line.h"
#include "platform/win32/process_start.h"
#include "platform/win32/win32_system.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

// The system's headers name the parameters in a style of their own.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int show) {
  try {
    kiv::prepareProcess();
    // While a module is open the panel answers nothing. The system would show a copy of it that can be moved and
    // closed.
    DisableProcessWindowsGhosting();
    kiv::Win32System system;
    kiv::PanelUser user;
    kiv::KivSystem program({system, user, system, system});
    kiv::PanelWindow::measure(program.panel);
    if (const auto exitCode = kiv::exitCodeOf(user, [&] { kiv::Form_Load(program, kiv::argumentsOfProcess()); })) {
      return *exitCode;
    }
    return kiv::PanelWindow(user, program).run(show);
  } catch (const std::bad_alloc&) {
    return kiv::reportOutOfMemory();
  }
}
