// Makes a group of equal pages with one system each: of 131 KB, close to the longest that a page file can be, or of 8.

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <string_view>

#include "bench/pages.h"

int main(int argc, char** argv) {
  const bool small = argc == 4 && std::string_view(argv[3]) == "8";
  if (argc != 3 && !small) {
    std::cerr << "usage: make_group FOLDER PAGES [8]\n";
    return 2;
  }
  const std::string page = kiv::bench::makePage(small ? kiv::bench::page8 : kiv::bench::page131);
  if (page.empty()) {
    return 1;
  }
  const long pages = std::strtol(argv[2], nullptr, 10);
  for (long number = 1; number <= pages; ++number) {
    const std::string digits = std::to_string(100000 + number).substr(1);
    std::ofstream file(std::string(argv[1]) + "/PAGE" + digits + ".MUS", std::ios::binary);
    file << page;
    if (!file.flush()) {
      std::cerr << "cannot write the pages into " << argv[1] << '\n';
      return 1;
    }
  }
  return 0;
}
