#include <sstream>

#include "tests/music/orchestra.h"
#include "tests/music/orchestra_voices.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

/// The number after a word of the line is changed; a line without the word stays.
void change(std::string& line, const std::string& word, double by, double times) {
  const std::size_t at = line.find(word);
  if (at != std::string::npos) {
    const std::size_t begin = at + word.size();
    std::size_t length = 0;
    const double value = std::stod(line.substr(begin), &length);
    line.replace(begin, length, orchestra::text(value * times + by));
  }
}

/// Items that hold a system together stay; those without them are no piece.
bool mayBeWrong(const std::string& line) {
  return !line.starts_with("staff") && line.find(" spans ") == std::string::npos;
}

}  // namespace

Orchestra withErrors(const Orchestra& orchestra, std::uint32_t number) {
  RandomGenerator random(number);
  Orchestra wrong = orchestra;
  const std::size_t chances = 10 + random.below(40);
  for (auto& [name, page] : wrong.pages) {
    std::istringstream lines(page);
    std::string changed;
    for (std::string line; std::getline(lines, line);) {
      const bool isWrong = mayBeWrong(line) && random.oneIn(chances);
      const std::size_t kind = isWrong ? random.below(4) : 4;
      if (kind == 0) {
        continue;
      }
      if (kind == 1) {
        change(line, " at ", static_cast<double>(random.below(60)) - 30, 1);
      } else if (kind == 2) {
        change(line, " duration ", 0, random.oneIn(2) ? 2 : 0.5);
      } else if (kind == 3) {
        change(line, " lower ", random.oneIn(2) ? 1 : -4, 1);
        change(line, " key ", 5, 1);
      }
      changed += line + "\n";
    }
    page = changed;
  }
  return wrong;
}

}  // namespace kiv::test
