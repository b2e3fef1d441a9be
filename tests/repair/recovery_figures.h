#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "repair/recovery.h"
#include "tests/repair/damage.h"
#include "tests/repair/random_pages.h"

namespace kiv::test {

/// What came of damaged pages.
struct RecoveryFigures {
  std::size_t pages = 0;       ///< those that a reader refuses
  std::size_t stillWhole = 0;  ///< those that it reads in spite of the damage, of which nothing is recovered
  std::size_t undamaged = 0;   ///< items whose bytes were all there
  std::size_t back = 0;        ///< those of them that were saved
  std::size_t invented = 0;    ///< items that were saved where the original had none, or one of another length
  std::size_t inventing = 0;   ///< pages that have such items

  void add(const RecoveryFigures& other);
  /// In percent; 100 when there were none.
  double itemsBack() const;
  double pagesWithoutInvented() const;
};

/// A generated page with a damage.
struct DamagedSample {
  PageStyle style{};
  DamageKind kind{};
  DamagedPage page;
};

/// The sample of this number: each combination of style and damage in turn, with 5 to 4000 items.
DamagedSample sampleOf(std::uint32_t number);

/// Compares what was recovered of a page with the original.
RecoveryFigures figuresOf(const DamagedPage& page, const repair::Recovery& recovery);

}  // namespace kiv::test
