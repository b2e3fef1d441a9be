// Writes groups of pages for runs of the console program: write_groups FOLDER COUNT
//
// FOLDER gets a folder for each group: 001, 002 ... with the pages. They are the same in every run.

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <map>
#include <string>
#include <vector>

#include "tests/properties/groups.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using Pages = std::map<std::string, std::string>;  // the page texts by the names of their files

/// A group from a letter for each page: the instruments of its systems from the top, and what else is on each staff.
std::string systemOf(const std::string& instruments, int lowest, const std::string& more) {
  const int count = static_cast<int>(instruments.size());
  std::string text;
  for (int i = 0; i < count; ++i) {
    const std::string staff = std::to_string(lowest + count - 1 - i);
    const std::string note = "note " + staff + " at ";
    text += "staff " + staff + " at 0 lines 5 instrument " + instruments[static_cast<std::size_t>(i)];
    text += "\nclef " + staff + " at 2 kind " + std::to_string(i) + "\ntimesignature " + staff;
    text += " at 6 upper 3 lower 4\n" + note + "20 height " + std::to_string(i) + " duration 3\n" + note + "70\n";
  }
  const std::string barline = "barline " + std::to_string(lowest) + " at ";
  text += barline + "0 spans " + std::to_string(count) + "\n" + barline + "60 spans 1\n" + barline + "100 spans 1\n";
  return text + more;
}

/// What the generator does not give: numbers that are none, cue markers, other names, many staves, loose items.
std::vector<Pages> writtenByHand() {
  std::vector<Pages> groups;
  for (const char* item : {"note 2 at 0x7FC12345 height 3\n", "clef 2 at 0x7FC00001 kind 0x7FC00002\n",
                           "barline 1 at 30 spans 1 kind 0x7FC00003\n", "barline 2 at 0x7FC00004 spans 1\n",
                           "shorttext 2 at 20 p4 0xFFC00005 \"ff\"\n"}) {
    groups.push_back({{"NAN001.MUS", systemOf("12", 1, item)}, {"NAN002.MUS", systemOf("2", 1, "")}});
  }
  groups.push_back({{"12AB034.MUS", systemOf("123", 1, "rest 2 at 30 kind -2 cue 3\nrest 1 at 31 kind -12 cue 9\n")},
                    {"12AB035A.MUS", systemOf("32", 1, "rest 1 at 30 kind -12 height 1.5 cue 1\n")},
                    {"12AB035B.MUS", systemOf("14", 1, "barline 2 at 0 spans 1 kind 8\n")}});
  groups.push_back({{"X1AB.MUS", systemOf("21", 1, "")}, {"X1AC.MUS", systemOf("12", 1, "")}});
  groups.push_back({{"MANY1.MUS", systemOf("123456789", 1, systemOf("987654321", 10, ""))},
                    {"MANY2.MUS", systemOf("13579", 3, "note 200 at 9\nitem 4 0 9 1\n")}});
  groups.push_back({{"LEFT1.MUS", systemOf("12", 1, "barline 1 at 1 spans 3\nbarline 2 at -1 spans 1\n")},
                    {"LEFT2.MUS",
                     "staff 4 at 3 size -0.5 lines 3 instrument 7\nnote 4 at 9\nkeysignature 4 at 7 key 3\n"
                     "barline 4 at 5 spans 0\nbarline 4 at 50 spans 1\nnote 4 at 60\n"
                     "barline 4 at 120 spans 0 kind 3\n"}});
  return groups;
}

std::vector<Pages> allGroups(int count) {
  constexpr int sizes = 100;
  constexpr std::uint64_t seed = 19940307;
  std::vector<Pages> all = writtenByHand();
  const auto generator = groups(1);
  rc::Random random(seed);
  for (int i = 0; static_cast<int>(all.size()) < count; ++i) {
    all.push_back(generator(random.split(), 1 + 7 * i % sizes).value().pages);
  }
  return all;
}

void write(const std::vector<Pages>& all, const std::filesystem::path& folder) {
  for (std::size_t i = 0; i < all.size(); ++i) {
    const std::string number = std::to_string(i + 1);
    const auto place = folder / (std::string(3 - std::min<std::size_t>(3, number.size()), '0') + number);
    std::filesystem::create_directories(place);
    for (const auto& [name, text] : all[i]) {
      std::ofstream(place / name, std::ios::binary) << page(text);
    }
  }
}

}  // namespace
}  // namespace kiv::test

int main(int count, char** arguments) {
  const std::vector<std::string> words(arguments, arguments + count);
  if (words.size() != 3) {
    std::cerr << "usage: write_groups FOLDER COUNT\n";
    return 2;
  }
  kiv::test::write(kiv::test::allGroups(std::atoi(words[2].c_str())), words[1]);
  return 0;
}
