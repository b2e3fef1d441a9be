#include "analysis/left_barlines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <vector>

namespace kiv {
namespace {

constexpr int highestStaff = 256;

/// Rows of one kind, staff by staff, each staff's in table order.
class RowsByStaff {
 public:
  explicit RowsByStaff(const ItemTable& table) : next_(static_cast<std::size_t>(table.itemCount()) + 1) {}

  void add(std::size_t staff, int row) {
    int& last = last_[staff];
    (last == none ? first_[staff] : next_[static_cast<std::size_t>(last)]) = row;
    last = row;
  }
  bool hasAny(std::size_t staff) const { return first_[staff] != none; }
  template <typename Visit>
  void forEach(std::size_t staff, Visit visit) const {
    isAny(staff, [&](int row) {
      visit(row);
      return false;
    });
  }
  /// Whether any row of the staff is such a one; those after it are not tried.
  template <typename Condition>
  bool isAny(std::size_t staff, Condition condition) const {
    int row = first_[staff];
    while (row != none && !condition(row)) {
      row = next_[static_cast<std::size_t>(row)];
    }
    return row != none;
  }

 private:
  static constexpr int none = 0;
  std::array<int, highestStaff + 1> first_{};
  std::array<int, highestStaff + 1> last_{};
  std::vector<int> next_;  // the next row of the same staff
};

struct PageRows {
  explicit PageRows(const ItemTable& table);

  RowsByStaff staves;
  RowsByStaff barlines;
  std::size_t endOfStaves = 0;  ///< no staff has this number or a higher one
};

PageRows::PageRows(const ItemTable& table) : staves(table), barlines(table) {
  for (int i = 1; i <= table.itemCount(); ++i) {
    const float staff = table.itemPar(i, par::staff);
    if (!(staff >= 1 && staff <= highestStaff) || staff != static_cast<float>(static_cast<int>(staff))) {
      continue;
    }
    const auto number = static_cast<std::size_t>(staff);
    if (isStaff(table, i)) {
      staves.add(number, i);
      endOfStaves = std::max(endOfStaves, number + 1);
    } else if (table.type(i) == ItemType::barline) {
      barlines.add(number, i);
    }
  }
}

bool isPlain(const ItemTable& table, int barline) {
  return table.itemPar(barline, par::kind) <= highestBarlineKind;
}

bool standsAt(const ItemTable& table, int staff, int barline) {
  return std::fabs(table.itemPar(staff, par::position) - table.itemPar(barline, par::position)) <= 1;
}

void markBarlines(const PageRows& rows, std::size_t number, ItemTable& table) {
  rows.barlines.forEach(number, [&](int j) {
    if (!isPlain(table, j)) {
      table.itemPar(j, par::mark) = mark::notABarline;
    } else if (rows.staves.isAny(number, [&](int i) { return standsAt(table, i, j); })) {
      table.itemPar(j, par::mark) = mark::leftBarline;
    }
  });
}

/// The largest number of staves that a barline of the staff spans, braces included; 1 when none spans any.
std::int16_t spanOf(const RowsByStaff& barlines, std::size_t number, const ItemTable& table) {
  std::int16_t span = 0;
  barlines.forEach(number, [&](int j) {
    if (table.itemPar(j, par::spannedStaves) > static_cast<float>(span)) {
      span = wholePar(table, j, par::spannedStaves);
    }
  });
  return span == 0 ? std::int16_t{1} : span;
}

}  // namespace

void deleteLeftBarlines(ItemTable& table) {
  const PageRows rows(table);
  std::size_t s = 1;
  while (s < rows.endOfStaves) {
    const std::size_t number = s++;
    if (!rows.staves.hasAny(number)) {
      continue;
    }
    const std::int16_t span = spanOf(rows.barlines, number, table);
    markBarlines(rows, number, table);
    rows.staves.forEach(number, [&](int i) {
      table.itemPar(i, par::mark) = mark::bottomStaff;
      table.itemPar(i, par::stavesUp) = span;
    });
    s += static_cast<std::size_t>(span - 1);
  }
}

}  // namespace kiv
