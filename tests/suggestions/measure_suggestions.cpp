// Prints how often the suggestions of kivsys are right, of generated groups: a line for each kind of them.
//
// measure_suggestions [--list] [--validation] [GROUPS [FIRST]]
//
// --list also prints every suggestion, and every damaged staff without one, on standard error. --validation takes the
// groups that no threshold was chosen with.

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "messages/message.h"
#include "tests/suggestions/calibration_groups.h"
#include "tests/suggestions/suggestion_rates.h"
#include "tests/suggestions/validation_groups.h"

namespace kiv::test {
namespace {

void list(long number, const WrittenGroup& group, const Suggestions& suggestions) {
  std::map<std::pair<std::string, std::string>, const WrittenStaff*> open;
  for (const WrittenStaff& staff : group.staves) {
    open[{staff.file, std::to_string(staff.staff)}] = &staff;
  }
  for (const Correction& correction : suggestions.corrections) {
    const std::string file = correction.at.file.substr(correction.at.file.find_last_of('\\') + 1);
    const auto meant = open.find({file, correction.at.staff});
    if (correction.at.isCue || meant == open.end()) {
      continue;
    }
    std::cerr << number << '\t' << group.kind << '\t' << nameOf(correction.at.problem) << '\t' << correction.margin
              << '\t' << (meant->second->trueId == correction.newId ? "right" : "wrong") << '\t' << file << '\t'
              << correction.at.staff << '\t' << correction.at.oldId << '\t' << correction.newId << '\t'
              << meant->second->trueId << '\t' << correction.reason << '\n';
    open.erase(meant);
  }
  for (const auto& [at, staff] : open) {
    if (staff->writtenId != staff->trueId) {
      std::cerr << number << '\t' << group.kind << "\topen\t0\tnone\t" << at.first << '\t' << at.second << '\t'
                << staff->writtenId << "\t0\t" << staff->trueId << "\t\n";
    }
  }
}

/// Groups of which all kinds that begin alike are counted together, too.
std::string wholeOf(const std::string& kind) {
  const std::string begin = kind.substr(0, kind.find(':'));
  return "all " + (begin == "undamaged" || begin == "consistent" ? begin : "others");
}

/// Nullopt for a group whose analysis ends over a critical message, as one with too many instruments does: there is
/// nothing to suggest then. The message is printed.
std::optional<Suggestions> suggestionsOrEnd(long number, const WrittenGroup& group) {
  try {
    return suggestFor(group);
  } catch (const ProgramEnd& end) {
    std::cerr << "group " << number << ": " << (end.message ? end.message->text : "ends") << '\n';
    return std::nullopt;
  }
}

int measure(const std::vector<std::string>& arguments) {
  bool lists = false;
  bool validates = false;
  std::vector<long> numbers;
  for (const std::string& argument : arguments) {
    if (argument == "--list") {
      lists = true;
    } else if (argument == "--validation") {
      validates = true;
    } else {
      numbers.push_back(std::strtol(argument.c_str(), nullptr, 10));
    }
  }
  constexpr long usualGroups = 2000;
  constexpr std::size_t fewestSystems = 4;
  const long first = numbers.size() > 1 ? numbers[1] : 0;
  const long end = first + (numbers.empty() ? usualGroups : numbers[0]);
  std::map<std::string, SuggestionRates> byKind;
  for (long number = first; number < end; ++number) {
    const auto seed = static_cast<std::uint32_t>(number);
    const WrittenGroup group = writeGroup(validates ? validationGroup(seed) : calibrationGroup(seed));
    const auto suggestions = suggestionsOrEnd(number, group);
    if (!suggestions) {
      continue;
    }
    SuggestionRates rates;
    rates.add(group, *suggestions);
    byKind[group.kind].add(rates);
    byKind[wholeOf(group.kind)].add(rates);
    if (group.systems == fewestSystems) {
      byKind[wholeOf(group.kind) + " of 4 systems"].add(rates);
    }
    if (lists) {
      list(number, group, *suggestions);
    }
  }
  printRates(std::cout, byKind);
  return 0;
}

}  // namespace
}  // namespace kiv::test

int main(int argc, char** argv) {
  return kiv::test::measure({argv + 1, argv + argc});
}
