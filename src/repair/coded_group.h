#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "repair/group_evidence.h"

namespace kiv {

/// What staves of one instrument have in common, besides names.
enum class Feature { clef, lines, size, keyDistance, key, brace, range };
inline constexpr std::size_t featureCount = 7;

/// The code of a value that a page does not say.
inline constexpr int unknownCode = -1;

/// A staff with its evidence as small numbers: equal values have equal codes.
struct CodedStaff {
  std::int16_t id = 0;
  bool repeated = false;  ///< another staff of the system has the same id, which is not 0
  std::int16_t shownNumber = 0;
  int name = unknownCode;
  std::array<int, featureCount> features{};

  bool operator==(const CodedStaff&) const = default;
};

using CodedSystem = std::vector<CodedStaff>;

/// The evidence of a group, ready to be counted and compared.
struct CodedGroup {
  std::vector<CodedSystem> systems;
  /// The share that each value has among all known ones of its feature.
  std::array<std::vector<double>, featureCount> shares;
  std::vector<std::string> names;          ///< the different ones
  std::vector<std::vector<double>> alike;  ///< of two names: 1 for the same, less when one is short for the other, or 0
  std::map<std::int16_t, std::vector<std::size_t>> idSystems;  ///< the systems in which an id stands; without 0
  std::size_t staves = 0;
};

/// Codes the evidence. Keys are also taken as distances from the commonest key of their system, which the key of a
/// piece does not change for transposing instruments.
CodedGroup encode(const GroupEvidence& group);

}  // namespace kiv
