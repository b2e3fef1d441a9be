#include "apps/kivsys/safety/old_results.h"

#include <algorithm>
#include <set>

#include "base/counted.h"
#include "platform/console/printable.h"

namespace kiv {
namespace {

/// Numbers that follow one another are one range.
std::vector<std::string> rangesOf(ConsoleSystem& system, const std::vector<NamedResult>& results) {
  std::vector<std::string> ranges;
  for (std::size_t first = 0, last = 0; first < results.size(); first = ++last) {
    while (last + 1 < results.size() && results[last + 1].number == results[last].number + 1) {
      ++last;
    }
    ranges.push_back(system.shownName(results[first].name) +
                     (first == last ? "" : " to " + system.shownName(results[last].name)));
  }
  return ranges;
}

}  // namespace

OldResults oldResultsAfter(ConsoleSystem& system, const std::vector<NamedResult>& there, const std::string& firstResult,
                           const std::vector<std::string>& written) {
  OldResults fate;
  if (written.empty()) {
    return fate;
  }
  std::set<std::size_t> numbers;
  for (const std::string& name : written) {
    numbers.insert(numberOfResult(system, firstResult, name));
  }
  std::vector<NamedResult> left;
  for (const NamedResult& result : there) {
    if (numbers.contains(result.number)) {
      ++fate.replaced;
    } else {
      left.push_back(result);
      fate.left.push_back(system.outputPath(result.name));
    }
  }
  fate.ranges = rangesOf(system, left);
  return fate;
}

std::string oldResultsNote(const OldResults& results, bool isDryRun) {
  constexpr std::size_t mostRanges = 6;
  std::string words;
  if (results.replaced > 0) {
    const std::string verb = isDryRun                ? " would be replaced"
                             : results.replaced == 1 ? " was replaced"
                                                     : " were replaced";
    words = counted(results.replaced, "old result") + verb;
  }
  if (!results.left.empty()) {
    words += words.empty() ? "" : "; ";
    for (std::size_t r = 0; r < std::min(mostRanges, results.ranges.size()); ++r) {
      words += (r == 0 ? "" : ", ") + results.ranges[r];
    }
    words += results.ranges.size() > mostRanges ? " and " + std::to_string(results.ranges.size() - mostRanges) + " more"
                                                : "";
    const bool isOne = results.left.size() == 1;
    words += isDryRun ? " would remain, not of this run"
             : isOne  ? " remains, and is not of this run"
                      : " remain, and are not of this run";
  }
  const char* const kind = results.left.empty() ? "kivsys: note: " : "kivsys: warning: ";
  return words.empty() ? "" : kind + printable(words) + "\n";
}

}  // namespace kiv
