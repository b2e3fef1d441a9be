#include "tests/window/programs/say.h"

/// Ends late, which reveals a caller that does not wait.
int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int /*show*/) {
  constexpr DWORD milliseconds = 700;
  Sleep(milliseconds);
  kiv::test::say("late");
  return 0;
}
