#include "platform/win32/process_start.h"
#include "tests/window/programs/say.h"

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR commandLine, int) {
  if (*commandLine != '\0') {
    kiv::prepareProcess();
  }
  kiv::test::say(LoadLibraryA("OTHER.DLL") != nullptr ? "loaded" : "not loaded");
  return 0;
}
