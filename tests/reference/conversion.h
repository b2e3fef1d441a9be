#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "analysis/first_clef_table.h"
#include "mus/item_table.h"
#include "platform/host.h"

/// The reference implementation of reader and conversion: linear searches, bubble sorts, every file read for every
/// staff. What the system does faster must come to the same bytes.
namespace kiv::reference {

/// A column of a table whose rows are numbered from 1; row 0 is not used. Rows beyond the count keep their values.
template <typename Value>
class Column {
 public:
  void growTo(std::size_t count) { rows_.resize(std::max(rows_.size(), count + 1)); }
  Value& operator[](std::size_t row) { return rows_[row]; }
  const Value& operator[](std::size_t row) const { return rows_[row]; }

 private:
  std::vector<Value> rows_ = std::vector<Value>(1);
};

/// The instruments of the group, and what a rest staff copies of each.
struct OrderTable {
  std::size_t count = 0;
  Column<std::int16_t> instr;
  Column<std::int16_t> present;
  Column<float> size;  ///< 1000 is added; 0 is a size that is not known yet
  Column<float> lines;
  Column<float> par11;
  Column<float> clef;  ///< 1000 is added
  Column<float> clefHeight;
  Column<float> key;
  Column<float> keyType;
  Column<float> timeUp;
  Column<float> timeDn;
};

/// The barlines of staff 1 of the current system.
struct BarlineList {
  std::size_t count = 0;
  Column<float> position;
  Column<std::int16_t> kind;
};

/// The instruments that have carried a brace in any system so far.
struct BraceTable {
  std::size_t count = 0;
  Column<float> instr;
  Column<std::int16_t> kind;
};

/// What a run of the program keeps from one conversion to the next.
struct Tables {
  ItemTable items;
  OrderTable order;
  std::string musFileName;  ///< the page file that was analyzed or written last
};

/// One conversion of a group.
struct Conversion {
  Conversion(Files& theFiles, const FirstClefTable& theFirstClefs, Tables& tables)
      : files(theFiles), firstClefs(theFirstClefs), items(tables.items), order(tables.order) {}

  Files& files;
  const FirstClefTable& firstClefs;
  ItemTable& items;
  OrderTable& order;
  BarlineList barlines;
  BraceTable braces;
};

/// Parameter p of item i as a 16-bit integer; one that does not fit ends the program.
std::int16_t whole(const ItemTable& items, int i, int p);

/// Appends a barline of one staff of the instrument.
void appendStaffBarline(Conversion& run, std::int16_t instr, float staff, float position, std::int16_t kind);

}  // namespace kiv::reference
