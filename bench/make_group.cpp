// Makes a group of pages with one system each: equal ones of 131 KB, close to the longest that a page file can be, or
// of 8; or ones of 117 KB that lack two of 20 instruments, so that they need a conversion.

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

#include "bench/pages.h"

namespace {

std::string pageOf(std::string_view kind, int number) {
  if (kind == "incomplete") {
    return kiv::bench::makeIncompletePage(number);
  }
  return kiv::bench::makePage(kind == "8" ? kiv::bench::page8 : kiv::bench::page131);
}

bool writePage(const std::string& name, const std::string& page) {
  std::ofstream file(name, std::ios::binary);
  file << page;
  return !page.empty() && file.flush();
}

}  // namespace

int main(int argc, char** argv) {
  const std::string_view kind = argc == 4 ? argv[3] : "131";
  if (argc < 3 || argc > 4 || (kind != "131" && kind != "8" && kind != "incomplete")) {
    std::cerr << "usage: make_group FOLDER PAGES [8 | 131 | incomplete]\n";
    return 2;
  }
  constexpr int different = 20;  // incomplete pages; then they begin again
  const int pages = static_cast<int>(std::strtol(argv[2], nullptr, 10));
  for (int number = 1; number <= pages; ++number) {
    const std::string digits = std::to_string(100000 + number).substr(1);
    if (!writePage(std::string(argv[1]) + "/PAGE" + digits + ".MUS", pageOf(kind, number % different))) {
      std::cerr << "cannot write the pages into " << argv[1] << '\n';
      return 1;
    }
  }
  return 0;
}
