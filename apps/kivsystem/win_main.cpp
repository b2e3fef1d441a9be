#include <new>

#include "apps/kivsystem/out_of_memory.h"
#include "apps/kivsystem/panel_window.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

// The system's headers name the parameters in a style of their own.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR commandLine, int show) {
  try {
    kiv::PanelHost host;
    kiv::KivSystem program(host);
    kiv::PanelWindow::measure(program.panel);
    kiv::Form_Load(program, commandLine);
    return kiv::PanelWindow(host, program).run(show);
  } catch (const kiv::ProgramEnd& end) {
    return end.exitCode;
  } catch (const std::bad_alloc&) {
    return kiv::tellOutOfMemory();
  }
}
