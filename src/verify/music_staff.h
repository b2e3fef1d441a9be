#pragma once

#include <span>
#include <vector>

#include "mus/item.h"
#include "verify/music_time.h"

namespace kiv::proof {

/// Whether items of a type are clefs or signatures.
bool isSign(ItemType type);

/// What stands on a staff, as far as it says something about music.
struct StaffItems {
  std::vector<MusicNote> notes;  ///< rests included
  std::vector<Item> signs;       ///< clefs and signatures
  std::vector<Item> braces;      ///< brackets included
  std::vector<Item> texts;

  /// Adds an item, if it is one of these.
  void add(const Item& item);
};

/// A staff of a system.
class MusicStaff {
 public:
  /// Items at a position that is no finite number are left out, the others put in the order of their positions.
  MusicStaff(Item staff, StaffItems items);

  /// Its own item.
  const Item& staff() const { return staff_; }
  /// The identifier rounded to a whole number, as reports have it; NaN when it has more than 16 bits.
  float instrument() const { return instrument_; }
  const StaffItems& items() const { return items_; }

  /// The notes and rests from a position up to another; a null end is the end of the staff.
  std::span<const MusicNote> notesBetween(float from, const float* to) const;
  /// The same of clefs and signatures.
  std::span<const Item> signsBetween(float from, const float* to) const;

 private:
  Item staff_;
  float instrument_ = 0;
  StaffItems items_;
};

}  // namespace kiv::proof
