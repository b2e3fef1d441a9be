// Makes a group of pages of three systems each, for a piece of many instruments of which about a quarter is missing in
// every system, so that a conversion has staves to insert.

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <variant>
#include <vector>

#include "pagetext/page_text.h"

namespace {

constexpr int systemsOnAPage = 3;
constexpr int bars = 5;
constexpr int notesInABar = 4;
constexpr int barWidth = 30;
constexpr int firstBar = 20;

std::string line(const std::string& word, int staff, int position, const std::string& rest) {
  return word + " " + std::to_string(staff) + " at " + std::to_string(position) + " " + rest + "\n";
}

/// Instruments are numbered from 0, from the top staff down. In every system other ones are missing, but never all.
bool plays(int instrument, int system) {
  return (instrument * 7 + system * 3 + instrument * system) % 4 != 1;
}

bool hasBrace(int instrument) {
  return instrument % 5 == 4;
}

std::string signatures(int staff, int instrument, int system) {
  const std::string upper = system % 10 < 7 ? "4" : "3";
  std::string text = line("clef", staff, 2, "kind " + std::to_string(instrument % 3));
  if (instrument % 3 == 1) {
    text += line("keysignature", staff, 9, "key " + std::to_string(1 + system % 4));
  }
  return text + line("timesignature", staff, 14, "upper " + upper + " lower 4");
}

std::string barsText(int staff) {
  std::string text;
  for (int bar = 0; bar < bars; ++bar) {
    const int start = firstBar + bar * barWidth;
    for (int note = 0; note < notesInABar; ++note) {
      text += line("note", staff, start + 2 + 7 * note, "height 3 p5 1 p6 2 duration 1 p8 1 p9 1 p12 3.5 p13 1");
    }
    text += line("barline", staff, start + barWidth, "spans 1");
  }
  return text;
}

/// staves is how many the system's left barline spans, on its lowest staff; 0 for the other ones.
std::string staffText(int staff, int instrument, int system, std::size_t staves) {
  const std::string lines = instrument % 10 == 9 ? "1" : "5";
  std::string text =
      line("staff", staff, 0, "size 1 p6 0.8 lines " + lines + " instrument " + std::to_string(101 + instrument));
  if (staves != 0) {
    text += line("barline", staff, 0, "spans " + std::to_string(staves));
  }
  if (hasBrace(instrument)) {
    text += line("barline", staff, 0, "spans 2 kind 8");
  }
  return text + signatures(staff, instrument, system) + barsText(staff);
}

/// The systems of a page stand below each other, and staves are counted from the bottom.
std::string pageText(long firstSystem, long endSystem, int instruments) {
  std::string text;
  int staff = 1;
  for (long system = endSystem - 1; system >= firstSystem; --system) {
    const int number = static_cast<int>(system);
    std::vector<int> playing;
    for (int instrument = instruments - 1; instrument >= 0; --instrument) {
      if (plays(instrument, number)) {
        playing.push_back(instrument);
      }
    }
    for (const int instrument : playing) {
      text += staffText(staff, instrument, number, instrument == playing.front() ? playing.size() : 0);
      ++staff;
    }
  }
  return text;
}

bool writePage(const std::string& name, const std::string& text) {
  const auto page = kiv::buildPage(text);
  if (const auto* error = std::get_if<kiv::PageTextError>(&page)) {
    std::cerr << "line " << error->line << ": " << error->reason << '\n';
    return false;
  }
  std::ofstream file(name, std::ios::binary);
  file << std::get<std::string>(page);
  if (!file.flush()) {
    std::cerr << "cannot write " << name << '\n';
    return false;
  }
  return true;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 4) {
    std::cerr << "usage: make_systems FOLDER SYSTEMS STAVES\n";
    return 2;
  }
  const std::string folder = argv[1];
  const long systems = std::strtol(argv[2], nullptr, 10);
  const int instruments = static_cast<int>(std::strtol(argv[3], nullptr, 10));
  long number = 1;
  for (long system = 0; system < systems; system += systemsOnAPage) {
    std::string name = folder + "/PAGE";
    name += std::to_string(100000 + number).substr(1) + ".MUS";
    if (!writePage(name, pageText(system, std::min(system + systemsOnAPage, systems), instruments))) {
      return 1;
    }
    ++number;
  }
  return 0;
}
