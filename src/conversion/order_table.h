#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "analysis/first_clef_table.h"
#include "mus/marked_value.h"

namespace kiv {

/// One instrument of the common layout, and what a rest staff for it copies.
struct OrderEntry {
  std::int16_t instr = 0;
  std::int16_t present = 0;  ///< staves of the instrument in the system being converted
  MarkedValue size;          ///< the staff's P5; unknown until a staff is met
  float lines = 0;           ///< the staff's P7
  float par11 = 0;           ///< the staff's P11
  MarkedValue clef;          ///< the clef's P5
  float clefHeight = 0;      ///< the clef's P4
  float key = 0;             ///< the key signature's P5
  float keyType = 0;         ///< the key signature's P6
  float timeUp = 0;          ///< the time signature's P5: upper number, or a code
  float timeDn = 0;          ///< the time signature's P6

  bool operator==(const OrderEntry&) const = default;
};

/// The instruments of the common layout, in the order in which the report first names them, numbered from 1.
///
/// Only the identifiers are rebuilt for each conversion. The other columns keep, entry by entry and beyond the count,
/// what earlier conversions of the same run of the program left in them; a later one continues from there.
class OrderTable {
 public:
  std::int16_t count() const { return count_; }
  /// Entry k, from 1 to count().
  const OrderEntry& entry(int k) const { return entries_[static_cast<std::size_t>(k - 1)]; }
  OrderEntry& entry(int k) { return entries_[static_cast<std::size_t>(k - 1)]; }

  /// The index of the instrument, from 1; 0 when it has none. An identifier that is no whole number of 16 bits has
  /// none.
  int find(float instr) const;

  void clear();
  /// Appends an instrument that has no entry. Entry 32768 is an overflow, and ends the program.
  void add(std::int16_t instr);

 private:
  std::int16_t count_ = 0;
  std::vector<OrderEntry> entries_;
  std::unordered_map<std::int16_t, int> places_;
};

/// Rebuilds the order from the report's instruments.
void setInstrumentOrder(const std::vector<std::int16_t>& instruments, OrderTable& order);

// What is known of the instrument; 0 for one that is not in the table. A rest staff copies all of it but the height of
// rests and the time, which are kept for others.

float setDetailPar5(const OrderTable& order, std::int16_t instr);
float setDetailPar7(const OrderTable& order, std::int16_t instr);
float setDetailPar11(const OrderTable& order, std::int16_t instr);
/// The code of barlines on a staff of as many lines; 0 for five lines.
float setDetailBarline(const OrderTable& order, std::int16_t instr);
/// The kind of the instrument's first clef.
MarkedValue setDetailClef(const FirstClefTable& firstClefs, std::int16_t instr);
float setDetailClefHite(const FirstClefTable& firstClefs, std::int16_t instr);
float setDetailKey(const OrderTable& order, std::int16_t instr);
float setDetailKeyType(const OrderTable& order, std::int16_t instr);
/// The height of rests on a staff of as many lines; 0 for five lines.
float setDetailRestHite(const OrderTable& order, std::int16_t instr);
/// The length of a bar in quarter notes. A time signature over 0 ends the program, unless its upper number alone gives
/// the length.
float setDetailTime(const OrderTable& order, std::int16_t instr);

}  // namespace kiv
