#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tests/support/random.h"

namespace kiv::test {

/// What the items of a generated page are like.
enum class PageStyle {
  score,      ///< as notation programs write them: staff by staff, from left to right, few lengths for each type
  mixed,      ///< all types with any length, staff by staff, most values small
  scattered,  ///< the same in no order, with values of any size
  texts,      ///< many texts, some of them long
  group,      ///< a page of a generated group
};

constexpr PageStyle pageStyles[] = {PageStyle::score, PageStyle::mixed, PageStyle::scattered, PageStyle::texts,
                                    PageStyle::group};

/// The bytes of a page of that style with about that many items, at most as many as a page can have. A page of a group
/// has as many as it has.
std::string randomPage(RandomGenerator& random, PageStyle style, std::size_t items);

}  // namespace kiv::test
