#include "repair/slip_origins.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <set>
#include <string>
#include <utility>

#include "repair/typing_slips.h"

namespace kiv {
namespace {

constexpr std::size_t mostTyped = 8;
constexpr std::size_t mostDigits = 5;

void addNumber(const std::string& digits, std::set<std::int16_t>& numbers) {
  int number = 0;
  const bool fits = !digits.empty() && digits.front() != '0' && digits.size() <= mostDigits;
  if (fits) {
    std::from_chars(digits.data(), digits.data() + digits.size(), number);
  }
  if (number > 0 && number <= std::numeric_limits<std::int16_t>::max()) {
    numbers.insert(static_cast<std::int16_t>(number));
  }
}

/// Adds all numbers from which a single slip leads to the typed one: slips lead both ways.
void addOrigins(const std::string& typed, std::set<std::int16_t>& numbers) {
  for (std::size_t i = 0; i <= typed.size(); ++i) {
    for (char digit = '0'; digit <= '9'; ++digit) {
      addNumber(std::string(typed).insert(i, 1, digit), numbers);
      if (i < typed.size()) {
        addNumber(std::string(typed).replace(i, 1, 1, digit), numbers);
      }
    }
    if (i < typed.size()) {
      addNumber(std::string(typed).erase(i, 1), numbers);
    }
    if (i + 1 < typed.size()) {
      std::string exchanged = typed;
      std::swap(exchanged[i], exchanged[i + 1]);
      addNumber(exchanged, numbers);
    }
  }
}

}  // namespace

std::vector<SlipOrigin> slipOrigins(const std::map<std::int16_t, int>& typed) {
  std::vector<std::pair<int, std::int16_t>> byCount;
  byCount.reserve(typed.size());
  for (const auto& [number, count] : typed) {
    byCount.emplace_back(-count, number);
  }
  std::sort(byCount.begin(), byCount.end());
  byCount.resize(std::min(byCount.size(), mostTyped));
  std::set<std::int16_t> numbers;
  for (const auto& [count, number] : byCount) {
    addOrigins(std::to_string(number), numbers);
  }
  std::vector<SlipOrigin> origins;
  for (const std::int16_t meant : numbers) {
    if (typed.contains(meant)) {
      continue;
    }
    double share = 0;
    for (const auto& [count, number] : byCount) {
      share += -count * std::log(slipShare(number, meant));
    }
    origins.push_back({meant, share});
  }
  std::stable_sort(origins.begin(), origins.end(), [](const auto& a, const auto& b) { return a.share > b.share; });
  return origins;
}

}  // namespace kiv
