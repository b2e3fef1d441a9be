#include "repair/typing_slips.h"

#include <cstddef>
#include <string>
#include <utility>

namespace kiv {
namespace {

// How the slips of each kind share among all slips; the rest is for what no single slip explains.
constexpr double wrongDigits = 0.4;
constexpr double addedDigits = 0.2;
constexpr double doubledDigits = 0.12;
constexpr double missingDigits = 0.15;
constexpr double exchangedDigits = 0.12;
constexpr double anythingElse = 5e-4;
constexpr double digits = 10;

std::string digitsOf(std::int16_t number) {
  return std::to_string(number);
}

/// In how many places a character can be left out of the longer text to get the shorter one.
int waysToShorten(const std::string& longer, const std::string& shorter) {
  int ways = 0;
  for (std::size_t i = 0; longer.size() == shorter.size() + 1 && i < longer.size(); ++i) {
    ways += std::string(longer).erase(i, 1) == shorter ? 1 : 0;
  }
  return ways;
}

/// How many digits can be doubled to get what was typed.
int waysToDouble(const std::string& typed, const std::string& meant) {
  int ways = 0;
  for (std::size_t i = 0; i < meant.size(); ++i) {
    ways += std::string(meant).insert(i, 1, meant[i]) == typed ? 1 : 0;
  }
  return ways;
}

double shareOfSameLength(const std::string& typed, const std::string& meant) {
  const auto length = static_cast<double>(meant.size());
  std::size_t first = meant.size();
  std::size_t wrong = 0;
  for (std::size_t i = 0; i < meant.size(); ++i) {
    if (typed[i] != meant[i]) {
      first = wrong++ == 0 ? i : first;
    }
  }
  if (wrong == 1) {
    return wrongDigits / ((digits - 1) * length);
  }
  std::string exchanged = meant;
  if (wrong == 2 && first + 1 < exchanged.size()) {
    std::swap(exchanged[first], exchanged[first + 1]);
    if (exchanged == typed) {
      return exchangedDigits / (length - 1);
    }
  }
  return 0;
}

double singleSlip(const std::string& typed, const std::string& meant) {
  const auto length = static_cast<double>(meant.size());
  if (typed.size() == meant.size()) {
    return shareOfSameLength(typed, meant);
  }
  const double added = waysToShorten(typed, meant);
  const double doubled = waysToDouble(typed, meant);
  const double missing = waysToShorten(meant, typed);
  return addedDigits * added / (digits * (length + 1)) + doubledDigits * doubled / length +
         missingDigits * missing / length;
}

}  // namespace

double slipShare(std::int16_t typed, std::int16_t meant) {
  return singleSlip(digitsOf(typed), digitsOf(meant)) + anythingElse;
}

bool isSlipOf(std::int16_t typed, std::int16_t meant) {
  return typed != meant && singleSlip(digitsOf(typed), digitsOf(meant)) > 0;
}

}  // namespace kiv
