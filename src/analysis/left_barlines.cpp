#include "analysis/left_barlines.h"

#include <cmath>
#include <cstdint>
#include <vector>

#include "mus/number.h"

namespace kiv {
namespace {

constexpr int highestStaff = 256;
constexpr float leftBarline = 1;
constexpr float noBarline = -1;
constexpr float bottomStaff = 1;

/// The rows of staves and barlines, by staff number.
struct StaffRows {
  std::vector<int> staves;
  std::vector<int> barlines;
};
/// As many as the highest staff needs, the first of them for no staff.
using RowsByStaff = std::vector<StaffRows>;

RowsByStaff rowsByStaff(const ItemTable& table) {
  constexpr std::size_t usualBarlines = 32;
  RowsByStaff rows(1);
  for (int i = 1; i <= table.itemCount(); ++i) {
    const float staff = table.itemPar(i, par::staff);
    if (!(staff >= 1 && staff <= highestStaff) || staff != static_cast<float>(static_cast<int>(staff))) {
      continue;
    }
    const auto number = static_cast<std::size_t>(staff);
    if (number >= rows.size()) {
      rows.resize(number + 1);
    }
    StaffRows& ofStaff = rows[number];
    if (table.itemPar(i, par::type) == type::staff) {
      ofStaff.staves.push_back(i);
    } else if (table.itemPar(i, par::type) == type::barline) {
      if (ofStaff.barlines.empty()) {
        ofStaff.barlines.reserve(usualBarlines);
      }
      ofStaff.barlines.push_back(i);
    }
  }
  return rows;
}

bool isPlain(const ItemTable& table, int barline) {
  return table.itemPar(barline, par::kind) <= highestBarlineKind;
}

void markBarlines(const StaffRows& rows, ItemTable& table) {
  for (const int j : rows.barlines) {
    if (!isPlain(table, j)) {
      table.itemPar(j, par::mark) = noBarline;
      continue;
    }
    for (const int i : rows.staves) {
      if (std::fabs(table.itemPar(i, par::position) - table.itemPar(j, par::position)) <= 1) {
        table.itemPar(j, par::mark) = leftBarline;
        break;
      }
    }
  }
}

/// The largest number of staves that a barline of the staff spans, braces included; 1 when none spans any.
std::int16_t spanOf(Host& host, const std::string& musFileName, const StaffRows& rows, const ItemTable& table) {
  std::int16_t span = 0;
  for (const int j : rows.barlines) {
    const float spanned = table.itemPar(j, par::spannedStaves);
    if (spanned > static_cast<float>(span)) {
      const auto whole = toInt16(spanned);
      if (!whole) {
        host.runTimeError(RunTimeError::overflow, musFileName + ", item " + std::to_string(j));
      }
      span = *whole;
    }
  }
  return span == 0 ? std::int16_t{1} : span;
}

}  // namespace

void deleteLeftBarlines(Host& host, const std::string& musFileName, ItemTable& table) {
  const RowsByStaff rows = rowsByStaff(table);
  std::size_t s = 1;
  while (s < rows.size()) {
    const StaffRows& ofStaff = rows[s];
    ++s;
    if (ofStaff.staves.empty()) {
      continue;
    }
    const std::int16_t span = spanOf(host, musFileName, ofStaff, table);
    markBarlines(ofStaff, table);
    for (const int i : ofStaff.staves) {
      table.itemPar(i, par::mark) = bottomStaff;
      table.itemPar(i, par::stavesUp) = span;
    }
    s += static_cast<std::size_t>(span - 1);
  }
}

}  // namespace kiv
