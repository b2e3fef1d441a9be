#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "mus/item_table.h"
#include "mus/marked_value.h"
#include "mus/reader.h"

namespace kiv {

/// The first clef of every instrument of the group, in the order in which the instruments were met.
struct FirstClefTable {
  struct Entry {
    std::int16_t firstClefInstr = 0;
    MarkedValue firstClefKind;  ///< the clef's P5
    float firstClefHeight = 0;  ///< the clef's P4

    bool operator==(const Entry&) const = default;
  };
  std::vector<Entry> entries;
  std::unordered_map<std::int16_t, std::size_t> places;  ///< of each instrument, its first entry in entries

  std::size_t firstClefCount() const { return entries.size(); }
  /// The first entry of the instrument; null when it has none.
  const Entry* find(std::int16_t instr) const;
  /// Appends an entry, which is found unless the instrument has one already.
  void add(const Entry& entry);
};

/// Finds the first staff item with a given staff number among those added.
class StaffFinder {
 public:
  /// Starts with the staff items of the table.
  explicit StaffFinder(const ItemTable& table);

  void add(float staff, int row);
  /// The row of the staff item; 0 when there is none.
  int find(float staff) const;

 private:
  static constexpr std::size_t smallStaves = 257;
  static bool isSmallWhole(float staff) {
    return staff >= 0 && staff < smallStaves && staff == static_cast<float>(static_cast<int>(staff));
  }

  std::array<std::int16_t, smallStaves> small_{};  // the rows of whole staff numbers
  std::unordered_map<float, int> others_;
};

/// Enters a clef as its instrument's first, unless the instrument has one or the clef's staff is not in the table.
/// The clef's staff number is compared as it was read. An instrument identifier that 16 bits do not hold ends the
/// program; the message names the item that the reader has found.
void updateFirstClefTable(const Item& clef, const ItemTable& table, const StaffFinder& staves, const MusReader& reader,
                          FirstClefTable& firstClefs);

}  // namespace kiv
