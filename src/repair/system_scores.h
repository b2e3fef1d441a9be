#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "repair/coded_group.h"
#include "repair/damage_rates.h"
#include "repair/optimal_assignment.h"
#include "repair/reference_layout.h"
#include "repair/slot_ids.h"

namespace kiv {

/// What a group is known to be before its systems are looked at one by one.
struct GroupKnowledge {
  const CodedGroup& group;
  const ReferenceLayout& layout;
  const std::vector<KnownInstrument>& instruments;
  const DamageRates& rates;
};

/// How well the staves of a system fit to the known instruments: logarithms of likelihoods.
class SystemScores {
 public:
  /// The knowledge must outlive the scores.
  SystemScores(const GroupKnowledge& knowledge, std::size_t system);

  /// Trusts no id of the system more than these rates allow, and takes the order from the looks.
  void distrustIds(const DamageRates& rates) {
    rates_ = rates;
    trustsIds_ = false;
  }
  /// The rates of the errors in this system if its staves are those of the layout from the top down; none if there are
  /// more or less of them, or hardly any error.
  std::optional<DamageRates> ratesByPlace() const;
  /// Computes the scores, which the assignment is made by.
  const ScoreMatrix& score();

 private:
  void takeOut(std::size_t system);
  void scoreOrder();
  double idScore(std::size_t staff, const KnownInstrument& instrument) const;
  bool isBeside(const KnownInstrument& instrument, std::int16_t id) const;
  double scoreOfUnknown(std::size_t staff) const;
  std::optional<DamageRates> countErrors(const std::vector<std::int16_t>& meant, double least) const;
  bool isOnlyError(std::int16_t id) const;
  std::vector<std::size_t> unnamedSlots() const;
  bool isKnown(std::int16_t id) const;
  std::vector<double> companyScores() const;
  double companyScore(std::int16_t id) const;
  double placeScore(std::size_t staff, std::size_t slot) const;

  const GroupKnowledge& knowledge_;
  DamageRates rates_;
  bool trustsIds_ = true;
  std::size_t number_;
  CodedSystem system_;
  std::vector<LayoutSlot> slots_;  // without the system itself
  ScoreMatrix order_{0, 0};        // of staves in slots, 0 at best
  std::vector<double> extra_;      // of staves in no slot
  std::vector<double> present_;    // how likely each slot has a staff
  double missing_ = 0;             // the share of staves that complete systems would have more
  ScoreMatrix scores_{0, 0};
};

}  // namespace kiv
