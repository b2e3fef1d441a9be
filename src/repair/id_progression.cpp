#include "repair/id_progression.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <utility>

namespace kiv {
namespace {

/// Pairs of neighbors that are needed to speak of a regular numbering.
constexpr int enoughPairs = 2;
/// How likely the step between neighbors must be for a gap to be filled.
constexpr double verySure = 0.8;
/// How many ids there might be instead of the expected one.
constexpr double otherIds = 30;

}  // namespace

IdProgression::IdProgression(std::vector<std::int16_t> certain) : ids_(std::move(certain)) {
  std::map<long, int> steps;
  double pairs = 0;
  double rising = 0;
  for (std::size_t slot = 0; slot < ids_.size(); ++slot) {
    const auto above = neighbor(slot, true);
    if (ids_[slot] == 0 || !above) {
      continue;
    }
    const long slots = static_cast<long>(slot - above->slot);
    const long rise = static_cast<long>(ids_[slot]) - above->id;
    ++pairs;
    rising += rise > 0 ? 1 : 0;
    if (rise % slots == 0) {
      ++steps[rise / slots];
    }
  }
  const auto commonest =
      std::max_element(steps.begin(), steps.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  if (commonest != steps.end()) {
    constexpr double half = 0.5;
    step_ = commonest->first;
    regular_ = (commonest->second + half) / (pairs + 1);
    rising_ = (rising + half) / (pairs + 1);
    known_ = pairs >= enoughPairs;
  }
}

std::optional<IdProgression::Neighbor> IdProgression::neighbor(std::size_t slot, bool above) const {
  for (std::size_t s = slot; above ? s-- > 0 : ++s < ids_.size();) {
    if (ids_[s] != 0) {
      return Neighbor{s, ids_[s]};
    }
  }
  return std::nullopt;
}

std::optional<long> IdProgression::expected(std::size_t slot, bool above) const {
  const auto other = neighbor(slot, above);
  if (!other) {
    return std::nullopt;
  }
  return other->id + step_ * (static_cast<long>(slot) - static_cast<long>(other->slot));
}

double IdProgression::fit(std::size_t slot, std::int16_t id) const {
  if (!known_) {
    return 0;
  }
  double score = 0;
  for (const bool above : {true, false}) {
    const auto other = neighbor(slot, above);
    if (!other) {
      continue;
    }
    const bool rises = above == (id > other->id);
    const double likely = expected(slot, above) == id ? regular_ : (1 - regular_) / otherIds;
    score += std::log(likely) + std::log(rises ? rising_ : 1 - rising_);
  }
  return score / 2;
}

std::optional<std::int16_t> IdProgression::missingId(std::size_t slot) const {
  const auto fromAbove = expected(slot, true);
  const auto fromBelow = expected(slot, false);
  const auto id = fromAbove ? fromAbove : fromBelow;
  if (!known_ || regular_ < verySure || step_ == 0 || !id || (fromAbove && fromBelow && fromAbove != fromBelow) ||
      *id < 1 || *id > std::numeric_limits<std::int16_t>::max()) {
    return std::nullopt;
  }
  const auto missing = static_cast<std::int16_t>(*id);
  return std::find(ids_.begin(), ids_.end(), missing) == ids_.end() ? std::optional(missing) : std::nullopt;
}

}  // namespace kiv
