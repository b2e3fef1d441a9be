#include "repair/layout_profile.h"

#include <algorithm>
#include <cmath>

namespace kiv {
namespace {

struct FeatureWeight {
  double weight;
  double bound;
};

/// Key and its distance, clef and range go together, so none counts in full.
constexpr std::array<FeatureWeight, featureCount> weights = {
    {{1, 2.5}, {1, 2.5}, {0.7, 2}, {0.8, 2}, {0.3, 1}, {0.7, 2}, {0.5, 1.5}}};
constexpr double nameBound = 4;
/// How many staves the look of any staff counts for beside that of the slot.
constexpr double prior = 1;

double bounded(double score, double bound) {
  return std::clamp(score, -bound, bound);
}

}  // namespace

void LayoutSlot::add(const CodedStaff& staff, int weight) {
  stale_ = true;
  staves_ += weight;
  if (staff.id != 0) {
    ids_[staff.id] += weight;
    if (ids_[staff.id] == 0) {
      ids_.erase(staff.id);
    }
  }
  for (std::size_t f = 0; f < featureCount; ++f) {
    if (staff.features[f] != unknownCode) {
      const auto code = static_cast<std::size_t>(staff.features[f]);
      counts_[f].resize(std::max(counts_[f].size(), code + 1));
      counts_[f][code] += weight;
    }
  }
  if (staff.name != unknownCode) {
    names_[staff.name] += weight;
  }
}

int LayoutSlot::countOf(std::int16_t id) const {
  const auto found = ids_.find(id);
  return found == ids_.end() ? 0 : found->second;
}

std::int16_t LayoutSlot::commonestId() const {
  const auto best =
      std::max_element(ids_.begin(), ids_.end(), [](const auto& a, const auto& b) { return a.second < b.second; });
  return best == ids_.end() ? std::int16_t{0} : best->first;
}

double LayoutSlot::scoreOfName(int name, const CodedGroup& group) const {
  double same = 0;
  double all = 0;
  for (const auto& [other, count] : names_) {
    same += count * group.alike[static_cast<std::size_t>(name)][static_cast<std::size_t>(other)];
    all += count;
  }
  const double share = 1.0 / static_cast<double>(group.names.size() + 1);
  return bounded(std::log((same + prior * share) / (all + prior) / share), nameBound);
}

void LayoutSlot::updateScores(const CodedGroup& group) const {
  for (std::size_t f = 0; f < featureCount; ++f) {
    const std::vector<double>& shares = group.shares[f];
    double known = 0;
    for (const int count : counts_[f]) {
      known += count;
    }
    scores_[f].assign(shares.size(), 0);
    for (std::size_t code = 0; code < shares.size(); ++code) {
      const double count = code < counts_[f].size() ? counts_[f][code] : 0;
      const double ratio = (count + prior * shares[code]) / (known + prior) / shares[code];
      scores_[f][code] = bounded(weights[f].weight * std::log(ratio), weights[f].bound);
    }
  }
  nameScores_.assign(group.names.size(), 0);
  for (std::size_t name = 0; !names_.empty() && name < nameScores_.size(); ++name) {
    nameScores_[name] = scoreOfName(static_cast<int>(name), group);
  }
  stale_ = false;
}

double LayoutSlot::featureScore(const CodedStaff& staff, Feature feature, const CodedGroup& group) const {
  if (stale_) {
    updateScores(group);
  }
  const auto f = static_cast<std::size_t>(feature);
  return staff.features.at(f) == unknownCode ? 0 : scores_.at(f)[static_cast<std::size_t>(staff.features.at(f))];
}

double LayoutSlot::nameScore(const CodedStaff& staff, const CodedGroup& group) const {
  if (stale_) {
    updateScores(group);
  }
  return staff.name == unknownCode ? 0 : nameScores_[static_cast<std::size_t>(staff.name)];
}

double LayoutSlot::lookScore(const CodedStaff& staff, const CodedGroup& group) const {
  double score = nameScore(staff, group);
  for (std::size_t f = 0; f < featureCount; ++f) {
    score += featureScore(staff, static_cast<Feature>(f), group);
  }
  return score;
}

}  // namespace kiv
