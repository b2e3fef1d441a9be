#pragma once

#include <cstddef>
#include <cstdint>

#include "conversion/barlines.h"
#include "conversion/order_table.h"
#include "fit/group_music.h"
#include "mus/item_table.h"

namespace kiv {

/// How rest staves, braces and brackets are made.
enum class RestStaves {
  asKnownSoFar,  ///< as the panel does, from what the systems before have shown
  fitting,       ///< so that they fit the music of the whole group
};

/// Makes the rest staves and braces of a conversion that fit the music.
class FittedStaves {
 public:
  /// Learns from a system. All systems are learned, in their order, before the first is filled.
  void learn(const ItemTable& items, const BarlineList& barlines);
  /// Must be called once, after all systems were learned.
  void finish() { group_.finish(); }

  /// Numbers the staves as a result has them and adds rest staves, without their barlines, for the instruments of the
  /// order that are not present. Systems are numbered from 1.
  void addMissing(std::int16_t system, ItemTable& items, const OrderTable& order, const BarlineList& barlines) const;
  /// Adds the braces and brackets to a finished page.
  void addBraces(ItemTable& items) const;

 private:
  fit::GroupMusic group_;
};

}  // namespace kiv
