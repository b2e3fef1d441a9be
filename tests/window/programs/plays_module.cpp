// Plays one of the family's modules. What it does is written in script.txt, one command per line:
//   write FILE TEXT   leaves the text, with a line end after it, in the file
//   wait FILE         continues once the file exists
//   crash             ends as a broken program does
// Its command line is written to said.txt.

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/window/programs/say.h"

namespace {

void wait(const std::string& file) {
  constexpr DWORD milliseconds = 20;
  while (GetFileAttributesA(file.c_str()) == INVALID_FILE_ATTRIBUTES) {
    Sleep(milliseconds);
  }
}

void obey(const std::string& line) {
  std::istringstream words(line);
  std::string order;
  std::string file;
  words >> order >> file;
  if (order == "write") {
    std::string text;
    std::getline(words >> std::ws, text);
    std::ofstream(file, std::ios::binary | std::ios::app) << text << "\r\n";
  } else if (order == "wait") {
    wait(file);
  } else if (order == "crash") {
    std::_Exit(3);
  }
}

}  // namespace

int WINAPI WinMain(HINSTANCE /*instance*/, HINSTANCE /*previous*/, LPSTR commandLine, int /*show*/) {
  kiv::test::say(commandLine);
  std::ifstream script("script.txt");
  for (std::string line; std::getline(script, line);) {
    obey(line);
  }
  return 0;
}
