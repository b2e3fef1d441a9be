#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "mus/item_table.h"
#include "mus/reader.h"
#include "platform/host.h"

namespace kiv {

/// The first clef of every instrument of the group, in the order in which the instruments were met.
struct FirstClefTable {
  struct Entry {
    std::int16_t firstClefInstr = 0;
    float firstClefKind = 0;    ///< the clef's P5 + 1000, so that kind 0 differs from no clef
    float firstClefHeight = 0;  ///< the clef's P4

    bool operator==(const Entry&) const = default;
  };
  std::vector<Entry> entries;
  std::unordered_map<std::int16_t, std::size_t> places;  ///< of each instrument, its first entry in entries

  std::size_t firstClefCount() const { return entries.size(); }
  /// The first entry of the instrument; null when it has none.
  const Entry* find(std::int16_t instr) const;
};

/// Finds the first staff item with a given staff number among those it was told of.
class StaffFinder {
 public:
  /// Knows the staff items that are in the table already.
  explicit StaffFinder(const ItemTable& table);

  void add(float staff, int row);
  /// The row of the staff item; 0 when there is none.
  int find(float staff) const;

 private:
  static constexpr std::size_t usualStaves = 257;
  static bool isUsual(float staff) {
    return staff >= 0 && staff < usualStaves && staff == static_cast<float>(static_cast<int>(staff));
  }

  std::array<std::int16_t, usualStaves> usual_{};  // the rows of whole staff numbers
  std::unordered_map<float, int> others_;
};

/// Enters a clef as its instrument's first, unless the instrument has one or the clef's staff is not in the table.
/// The clef's staff number is compared as it was read. An instrument identifier that 16 bits do not hold ends the
/// program; the reader tells where it stands.
void updateFirstClefTable(Host& host, const Item& clef, const ItemTable& table, const StaffFinder& staves,
                          const MusReader& reader, FirstClefTable& firstClefs);

}  // namespace kiv
