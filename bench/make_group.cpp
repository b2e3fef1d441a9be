// Makes a group of full pages: each close to the longest that a page file can be, with one system of 20 staves.

#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <variant>

#include "mus/page_text.h"

namespace {

constexpr int staves = 20;
constexpr int bars = 15;
constexpr int notesInABar = 7;

std::string line(const std::string& word, int staff, int position, const std::string& rest) {
  return word + " " + std::to_string(staff) + " at " + std::to_string(position) + " " + rest + "\n";
}

std::string staffText(int staff) {
  constexpr int barWidth = 12;
  std::string text = line("staff", staff, 0, "size 1 lines 5 instrument " + std::to_string(100 + staff));
  text += line("clef", staff, 2, "kind 1") + line("timesignature", staff, 6, "upper 4 lower 4");
  if (staff == 1) {
    text += line("barline", staff, 0, "spans " + std::to_string(staves));
  }
  for (int bar = 0; bar < bars; ++bar) {
    const int start = 10 + bar * barWidth;
    for (int note = 0; note < notesInABar; ++note) {
      text += line("note", staff, start + note + 1, "height 3 p5 1 p6 2 duration 0.5 p8 1 p9 1 p12 3.5 p13 1");
    }
    text += line("barline", staff, start + barWidth, "spans 1");
  }
  return text;
}

std::string pageText() {
  std::string text;
  for (int staff = 1; staff <= staves; ++staff) {
    text += staffText(staff);
  }
  return text;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: make_group FOLDER PAGES\n";
    return 2;
  }
  const auto page = kiv::buildPage(pageText());
  if (const auto* error = std::get_if<kiv::PageTextError>(&page)) {
    std::cerr << "line " << error->line << ": " << error->reason << '\n';
    return 1;
  }
  const long pages = std::strtol(argv[2], nullptr, 10);
  for (long number = 1; number <= pages; ++number) {
    const std::string digits = std::to_string(100000 + number).substr(1);
    std::ofstream file(std::string(argv[1]) + "/PAGE" + digits + ".MUS", std::ios::binary);
    file << std::get<std::string>(page);
    if (!file.flush()) {
      std::cerr << "cannot write the pages into " << argv[1] << '\n';
      return 1;
    }
  }
  return 0;
}
