#include "platform/win32/win32_host.h"
#include "platform/win32/windows_api.h"
#include "shell/kivsystem.h"
#include "shell/start_up.h"

// The system's headers name the parameters in a style of their own.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name)
int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR commandLine, int /*show*/) {
  kiv::Win32Host host;
  kiv::KivSystem program(host);
  try {
    kiv::Form_Load(program, commandLine);
  } catch (const kiv::ProgramEnd& end) {
    return end.exitCode;
  }
}
