#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "mus/item_table.h"
#include "shell/kivsystem.h"

/// The conversion once more, in the plain and slow way: the measure of the fast one, and its oracle.
namespace kiv::literal {

/// A column of a table whose rows are numbered from 1; row 0 is never used.
template <typename Value>
class Column {
 public:
  void resize(std::size_t count) { rows_.resize(count + 1); }
  Value& operator[](std::size_t row) { return rows_[row]; }
  const Value& operator[](std::size_t row) const { return rows_[row]; }

 private:
  std::vector<Value> rows_ = std::vector<Value>(1);
};

/// The instruments of the group, and what a rest staff needs to know of each.
struct OrderTable {
  std::size_t count = 0;
  Column<std::int16_t> instr;
  Column<std::int16_t> present;
  Column<float> size;  ///< 1000 is added; 0 is a size that is not known yet
  Column<float> lines;
  Column<float> par11;
  Column<float> clef;  ///< 1000 is added
  Column<float> hite;
  Column<float> key;
  Column<float> type;
  Column<float> timeUp;
  Column<float> timeDn;
};

/// The barlines of staff 1 of the system at hand.
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

/// The staves of one system, as the report lists them.
struct StaffList {
  std::size_t count = 0;
  Column<std::int16_t> instrId;
  Column<std::int16_t> stavesUp;
  Column<std::int16_t> staff;
  Column<std::string> file;
  Column<std::int16_t> newStaff;
};

/// One run of the conversion on a program that has analysed its pages.
struct Conversion {
  explicit Conversion(KivSystem& theProgram)
      : program(theProgram), host(theProgram.host), items(theProgram.items), musFileName(theProgram.musFileName) {}

  KivSystem& program;
  Host& host;
  ItemTable& items;
  std::string& musFileName;
  OrderTable order;
  BarlineList barlines;
  BraceTable braces;
};

inline bool isOfType(const ItemTable& items, int i, float type) {
  return items.itemPar(i, par::type) == type;
}

/// An item of this type, staff and position whose other parameters are 0.
Item newItem(float type, float staff, float position);

/// Parameter p of item i as a 16-bit integer; one that does not fit ends the program.
std::int16_t whole(Conversion& run, int i, int p);

/// The value of a keyword of a report record; "" without the keyword.
std::string getElt(std::string_view rec, std::string_view par);

/// The number that the text begins with, as a 16-bit integer; one that does not fit ends the program.
std::int16_t wholeValue(Conversion& run, const std::string& text, std::string_view record);

}  // namespace kiv::literal
