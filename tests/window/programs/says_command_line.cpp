#include "tests/window/programs/say.h"

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int /*show*/) {
  kiv::test::say(GetCommandLineA());
  return 7;
}
