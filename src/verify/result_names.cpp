#include "verify/result_names.h"

#include <algorithm>
#include <map>
#include <string_view>

#include "input/file_names.h"
#include "platform/separators.h"

namespace kiv::proof {
namespace {

constexpr std::string_view suffix = ".MUS";
constexpr std::size_t digits = 4;

std::optional<std::string> stemOf(Machine& machine, const std::string& firstResultFile) {
  return withoutLastCharacters(machine, firstResultFile, digits + suffix.size());
}

bool isNumberAndSuffix(std::string_view rest) {
  return rest.size() >= digits + suffix.size() && rest.ends_with(suffix) &&
         rest.substr(0, rest.size() - suffix.size()).find_first_not_of("0123456789") == std::string_view::npos;
}

}  // namespace

std::optional<std::string> stemOfResults(Machine& machine, const std::string& firstResultFile) {
  auto stem = stemOf(machine, firstResultFile);
  return stem && lastBackslash(machine, *stem) != std::string::npos ? std::move(stem) : std::nullopt;
}

std::string resultName(const std::string& stem, std::size_t system) {
  const std::string number = std::to_string(system);
  std::string name = stem;
  return name.append(digits - std::min(digits, number.size()), '0').append(number).append(suffix);
}

StrayResults strayResults(Files& files, Machine& machine, const std::string& firstResultFile,
                          const std::vector<std::string>& names) {
  const std::string folder = justPath(machine, firstResultFile);
  const std::string stem = machine.upperCase(withoutPath(machine, stemOf(machine, firstResultFile).value_or("")));
  std::map<std::string, std::string> spellings;  // that were met, of each result
  for (const std::string& name : names) {
    spellings[machine.upperCase(withoutPath(machine, name))];
  }
  StrayResults stray;
  for (const FolderEntry& entry : files.listFolder(folder)) {
    const std::string name = machine.upperCase(entry.name);
    if (entry.isFolder || !name.starts_with(stem) || !isNumberAndSuffix(std::string_view(name).substr(stem.size()))) {
      continue;
    }
    const auto known = spellings.find(name);
    if (known == spellings.end()) {
      stray.surplus.push_back(folder + entry.name);
    } else if (known->second.empty()) {
      known->second = entry.name;
    } else {
      const auto [one, other] = std::minmax(known->second, entry.name);
      stray.doubled.push_back({folder + one, 0, "is a result that exists in a second spelling, " + other});
    }
  }
  std::sort(stray.surplus.begin(), stray.surplus.end());
  return stray;
}

}  // namespace kiv::proof
