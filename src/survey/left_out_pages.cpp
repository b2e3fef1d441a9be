#include <algorithm>
#include <set>
#include <string_view>

#include "shell/analysis_run.h"
#include "survey/survey.h"

namespace kiv {

std::vector<std::string> removeRecovered(Machine& machine, std::vector<std::string>& names) {
  const std::string_view prefix = recoveredPrefix;
  std::set<std::string> known;
  for (const std::string& name : names) {
    known.insert(machine.upperCase(name));
  }
  std::vector<std::string> removed;
  std::erase_if(names, [&](const std::string& name) {
    const std::string upper = machine.upperCase(name);
    const bool isRecovered =
        upper.starts_with(prefix) && upper.ends_with(".MUS") && known.contains(upper.substr(prefix.size()));
    if (isRecovered) {
      removed.push_back(name);
    }
    return isRecovered;
  });
  return removed;
}

std::vector<Piece> removeReserved(Machine& machine, std::vector<std::string>& names) {
  std::vector<Piece> reserved = piecesOf(machine, names);
  std::erase_if(reserved, [&](const Piece& piece) { return !isReservedName(machine.upperCase(piece.files.front())); });
  for (const Piece& piece : reserved) {
    std::erase_if(names, [&](const std::string& name) {
      return std::find(piece.files.begin(), piece.files.end(), name) != piece.files.end();
    });
  }
  return reserved;
}

std::string reservedWords(const Piece& results, const std::string& folder) {
  const bool isOne = results.files.size() == 1;
  return folder + results.files.front() + (isOne ? "" : " to " + folder + results.files.back()) +
         (isOne ? " is" : " are") + " left out, as the name " + results.files.front() + " is reserved for results";
}

}  // namespace kiv
