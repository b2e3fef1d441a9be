#include "verify/result_names.h"

#include <algorithm>
#include <set>
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

std::optional<std::vector<std::string>> resultNames(Machine& machine, const std::string& firstResultFile,
                                                    std::size_t count) {
  const auto stem = stemOf(machine, firstResultFile);
  if (!stem || lastBackslash(machine, *stem) == std::string::npos) {
    return std::nullopt;
  }
  std::vector<std::string> names;
  for (std::size_t system = 1; system <= count; ++system) {
    const std::string number = std::to_string(system);
    std::string name = *stem;
    name.append(digits - std::min(digits, number.size()), '0').append(number).append(suffix);
    names.push_back(std::move(name));
  }
  return names;
}

std::vector<std::string> surplusResults(Files& files, Machine& machine, const std::string& firstResultFile,
                                        const std::vector<std::string>& names) {
  const std::string folder = justPath(machine, firstResultFile);
  const std::string stem = machine.upperCase(withoutPath(machine, stemOf(machine, firstResultFile).value_or("")));
  std::set<std::string> known;
  for (const std::string& name : names) {
    known.insert(machine.upperCase(withoutPath(machine, name)));
  }
  std::vector<std::string> surplus;
  for (const FolderEntry& entry : files.listFolder(folder)) {
    const std::string name = machine.upperCase(entry.name);
    if (!entry.isFolder && name.starts_with(stem) && isNumberAndSuffix(std::string_view(name).substr(stem.size())) &&
        !known.contains(name)) {
      surplus.push_back(folder + entry.name);
    }
  }
  std::sort(surplus.begin(), surplus.end());
  return surplus;
}

}  // namespace kiv::proof
