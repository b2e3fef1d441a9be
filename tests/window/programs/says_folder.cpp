#include <array>

#include "tests/window/programs/say.h"

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR /*commandLine*/, int /*show*/) {
  std::array<char, MAX_PATH> folder{};
  GetCurrentDirectoryA(MAX_PATH, folder.data());
  kiv::test::say(folder.data());
  return 0;
}
