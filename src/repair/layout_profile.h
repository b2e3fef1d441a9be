#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "repair/coded_group.h"

namespace kiv {

/// One place of the reference layout, and what the staves in it look like.
class LayoutSlot {
 public:
  void add(const CodedStaff& staff, int weight = 1);
  /// How many staves are in the slot.
  int staves() const { return staves_; }
  /// How often each id stands there; without 0.
  const std::map<std::int16_t, int>& ids() const { return ids_; }
  int countOf(std::int16_t id) const;
  /// How often each name stands beside its staves, by the code of the name.
  const std::map<int, int>& names() const { return names_; }
  /// The commonest id, the lowest of equally common ones; 0 when there is none.
  std::int16_t commonestId() const;

  /// How much better the look of a staff fits to this slot than to any: the logarithm of a likelihood ratio, each
  /// feature being bounded, so that no single one decides.
  double lookScore(const CodedStaff& staff, const CodedGroup& group) const;
  /// The part of one feature.
  double featureScore(const CodedStaff& staff, Feature feature, const CodedGroup& group) const;
  /// The part of the name.
  double nameScore(const CodedStaff& staff, const CodedGroup& group) const;

 private:
  void updateScores(const CodedGroup& group) const;
  double scoreOfName(int name, const CodedGroup& group) const;

  int staves_ = 0;
  std::map<std::int16_t, int> ids_;
  std::array<std::vector<int>, featureCount> counts_;
  std::map<int, int> names_;
  mutable bool stale_ = true;  // the scores below are of earlier counts
  mutable std::array<std::vector<double>, featureCount> scores_;
  mutable std::vector<double> nameScores_;
};

}  // namespace kiv
