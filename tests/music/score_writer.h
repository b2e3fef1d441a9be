#pragma once

#include <cstdint>
#include <string>

#include "tests/music/score.h"

namespace kiv::test::score {

/// Numbers that follow from a seed.
class Choices {
 public:
  explicit Choices(int seed) : state_(static_cast<std::uint32_t>(seed) * 2654435761U + 12345U) {}
  /// From 0 up to, but not including, the limit.
  int below(int limit) {
    state_ = state_ * 1664525U + 1013904223U;
    return static_cast<int>((state_ >> 16U) % static_cast<std::uint32_t>(limit));
  }

 private:
  std::uint32_t state_;
};

constexpr double unitsPerQuarter = 12;
constexpr double unitsBeforeMusic = 8;  ///< after a barline or signature

/// The number as page text has it.
std::string text(double number);

/// The notes of one bar of a staff: one or two voices, all as long as the bar. A bar of the length that a whole one has
/// may be a whole-bar rest.
std::string notesOf(int staff, double begin, const ScoreBar& bar, Choices& choices);

}  // namespace kiv::test::score
