#include "apps/kivsys/output/sort_output.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "base/number.h"
#include "diagnostics/number_ranges.h"
#include "diagnostics/planned_results.h"

namespace kiv {
namespace {

/// The numbers of the staves of each instrument, in order.
std::map<double, std::vector<double>> stavesByInstrument(std::string_view page) {
  std::map<double, std::vector<double>> staves;
  for (const PlannedStaff& staff : stavesOfResult(page, {})) {
    staves[staff.instrument].push_back(staff.number);
  }
  for (auto& [instrument, numbers] : staves) {
    std::sort(numbers.begin(), numbers.end());
  }
  return staves;
}

std::string wordsFor(double staff) {
  return "staff " + generalNumber(static_cast<float>(staff));
}

}  // namespace

std::string movedStaves(std::string_view before, std::string_view after) {
  constexpr std::size_t mostMoves = 10;
  auto sorted = stavesByInstrument(after);
  std::vector<std::pair<double, double>> moves;
  for (const auto& [instrument, numbers] : stavesByInstrument(before)) {
    const std::vector<double>& now = sorted[instrument];  // a sort keeps the order of staves of one instrument
    for (std::size_t s = 0; s < std::min(numbers.size(), now.size()); ++s) {
      if (numbers[s] != now[s]) {
        moves.emplace_back(numbers[s], now[s]);
      }
    }
  }
  std::sort(moves.begin(), moves.end());
  std::vector<std::string> words;
  words.reserve(moves.size());
  for (const auto& [from, to] : moves) {
    words.push_back(wordsFor(from) + " is now " + wordsFor(to));
  }
  return words.empty() ? "already in order" : joined(words, mostMoves);
}

}  // namespace kiv
