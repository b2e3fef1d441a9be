#include "apps/kivsystem/panel_window.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

// The system's headers name the parameters in a style of their own.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR commandLine, int show) {
  kiv::PanelHost host;
  kiv::KivSystem program(host);
  kiv::PanelWindow::measure(program.panel);
  try {
    kiv::Form_Load(program, commandLine);
  } catch (const kiv::ProgramEnd& end) {
    return end.exitCode;
  }
  return kiv::PanelWindow(host, program).run(show);
}
