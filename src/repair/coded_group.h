#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "base/hash_index.h"
#include "base/index_iterator.h"
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

/// The staves of a system, from the top down. They are those of the group, which must outlive it.
class CodedSystem {
 public:
  using Iterator = IndexIterator<CodedSystem>;

  CodedSystem(std::span<const CodedStaff> different, std::span<const std::uint32_t> staves)
      : different_(different), staves_(staves) {}

  std::size_t size() const { return staves_.size(); }
  const CodedStaff& operator[](std::size_t staff) const { return different_[staves_[staff]]; }
  Iterator begin() const { return {*this, 0}; }
  Iterator end() const { return {*this, size()}; }

 private:
  std::span<const CodedStaff> different_;
  std::span<const std::uint32_t> staves_;  // numbers of them
};

/// The systems of a group. There are very many staves, of which most are like others, so those are kept once.
class CodedSystems {
 public:
  using Iterator = IndexIterator<CodedSystems>;

  /// Adds a system with these staves. Those that were given before are not valid any more.
  void add(const std::vector<CodedStaff>& system);

  std::size_t size() const { return firstStaves_.size(); }
  CodedSystem operator[](std::size_t system) const;
  CodedSystem front() const { return (*this)[0]; }
  Iterator begin() const { return {*this, 0}; }
  Iterator end() const { return {*this, size()}; }

 private:
  std::vector<CodedStaff> different_;
  HashIndex index_;
  std::vector<std::uint32_t> staves_;       // of all systems: numbers of different ones
  std::vector<std::uint32_t> firstStaves_;  // of each system
};

/// The evidence of a group, ready to be counted and compared.
struct CodedGroup {
  CodedSystems systems;
  /// The share that each value has among all known ones of its feature.
  std::array<std::vector<double>, featureCount> shares;
  std::vector<std::string> names;          ///< the different ones
  std::vector<std::vector<double>> alike;  ///< of two names: 1 for the same, less when one is short for the other, or 0
  std::map<std::int16_t, std::vector<std::uint32_t>> idSystems;  ///< the systems in which an id stands; without 0
  std::size_t staves = 0;
};

/// Codes the evidence. Keys are also taken as distances from the commonest key of their system, which the key of a
/// piece does not change for transposing instruments.
CodedGroup encode(const GroupEvidence& group);

}  // namespace kiv
