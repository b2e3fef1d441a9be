#include "tests/window/programs/say.h"

/// Takes its time, so that a caller that does not wait is found out.
int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int /*show*/) {
  constexpr DWORD milliseconds = 700;
  Sleep(milliseconds);
  kiv::test::say("late");
  return 0;
}
