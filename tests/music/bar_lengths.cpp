#include "tests/music/bar_lengths.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace kiv::test {
namespace {

constexpr double rounding = 0.01;

/// Notes and rests, but neither cues nor grace notes.
bool counts(const Item& item) {
  const bool isNote = item.type() == ItemType::note;
  const bool isRest = item.type() == ItemType::rest && item[par::cuedInstrument] == 0;
  return (isNote || isRest) && item[par::duration] > rounding;
}

bool fillsBar(const Item& item) {
  return item.type() == ItemType::rest && (item[par::kind] == -2 || item[par::kind] == -12);
}

}  // namespace

double lasts(const std::vector<Item>& staff, float from, float to) {
  double end = 0;
  std::map<float, std::vector<double>> byPosition;
  for (const Item& item : staff) {
    if (!counts(item) || item[par::position] < from || item[par::position] >= to) {
      continue;
    }
    if (fillsBar(item)) {
      end = std::max<double>(end, item[par::duration]);
    } else {
      byPosition[item[par::position]].push_back(item[par::duration]);
    }
  }
  std::vector<double> left;  // how long what sounds still does
  double now = 0;
  for (const auto& [position, durations] : byPosition) {
    const double step = left.empty() ? 0 : *std::min_element(left.begin(), left.end());
    now += step;
    for (double& one : left) {
      one -= step;
    }
    std::erase_if(left, [](double one) { return one < rounding; });
    left.insert(left.end(), durations.begin(), durations.end());
    end = std::max(end, now + *std::max_element(left.begin(), left.end()));
  }
  return end;
}

bool lastEqually(double one, double other) {
  return std::abs(one - other) < rounding;
}

}  // namespace kiv::test
