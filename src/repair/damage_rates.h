#pragma once

#include <cstdint>
#include <set>

#include "repair/coded_group.h"

namespace kiv {

/// How often the ids of a group are wrong, by the kind of the error; each is above 0.
struct DamageRates {
  double blank = 0;
  double doubled = 0;
  double mistyped = 0;
  double evident = 0;          ///< the number of ids that are evidently wrong
  double fromNeighbor = 0.45;  ///< of the doubled ids, those that are taken from the staff above, or from that below

  double all() const { return blank + doubled + mistyped; }

  /// How likely an id is written as it is when another one is meant: the logarithm. isNeighbor says whether the written
  /// id is that of a staff beside.
  double logWritten(std::int16_t written, std::int16_t meant, bool isNeighbor) const;
  /// The same without a name for what is meant: for any other id.
  double logWrittenOfAny(std::int16_t written) const;
};

/// Counts what is evidently wrong: ids that are 0, stand twice in their system, or stand in a single system of several.
DamageRates estimateDamage(const CodedGroup& group);
/// Counts what is wrong when these are the ids of all instruments.
DamageRates estimateDamage(const CodedGroup& group, const std::set<std::int16_t>& instruments);

}  // namespace kiv
