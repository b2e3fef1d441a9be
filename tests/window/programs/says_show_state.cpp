#include "tests/window/programs/say.h"

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int /*show*/) {
  STARTUPINFOA startup{};
  GetStartupInfoA(&startup);
  const bool isAsked = (startup.dwFlags & STARTF_USESHOWWINDOW) != 0;
  kiv::test::say(isAsked ? "show " + std::to_string(startup.wShowWindow) : "nothing asked");
  return 0;
}
