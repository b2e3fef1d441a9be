#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "mus/item_table.h"

namespace kiv {

/// Lengths of a page picture; its unit is a tenth of the distance between two staff lines.
namespace measure {
constexpr double step = 5;      ///< from a line to the space above it
constexpr double space = 10;    ///< from line to line
constexpr double position = 6;  ///< a page unit of P3
constexpr double margin = 20;
constexpr double titleHeight = 26;  ///< above the page, for its name
constexpr double labelHeight = 20;  ///< above a system, for its number
}  // namespace measure

/// A staff of a page, its location in the picture, and its items.
struct PlacedStaff {
  float number = 0;
  float instrument = 0;
  float position = 0;        ///< of the left end, in page units
  int lines = 5;             ///< 0 for a hidden staff
  double bottom = 0;         ///< y of the bottom line
  double left = 0;           ///< x of the left end
  double right = 0;          ///< x of the right end
  double label = 0;          ///< y of the line above it that names its system; only for the top staff of one
  std::size_t system = 0;    ///< counted from the bottom of the page; the staves of one system end at the same x
  bool isGenerated = false;  ///< a rest staff like those that a conversion generates
  std::vector<Item> items;   ///< all items of its number but the staff item

  /// y of a height counted in staff steps up from the bottom line.
  double y(double height) const { return bottom - measure::step * height; }
  /// The height of the top line.
  int topLine() const { return lines > 0 ? 2 * (lines - 1) : 2 * 4; }
  /// The height of the middle.
  double middle() const { return topLine() / 2.0; }
};

/// Where everything of a page is drawn. Positions and heights that lie beyond what a page of music needs are drawn at
/// the limit, NaNs at 0, so that the picture stays bounded.
struct PageLayout {
  std::vector<PlacedStaff> staves;  ///< from the bottom up
  std::size_t strayItems = 0;       ///< items whose staff is not on the page, or beyond the 256th
  double firstPosition = 0;         ///< at the left edge, in page units
  double width = 0;
  double height = 0;  ///< without a legend

  double x(float position) const;
  /// The x of the barlines that cross the staff, without that at its left end, from left to right. Barlines that stand
  /// together, as a double one, are one.
  std::vector<double> barlinesOf(const PlacedStaff& staff) const;
  /// The topmost staff that a line from this one across the number of staves reaches.
  const PlacedStaff& upperEnd(const PlacedStaff& from, float spannedStaves) const;
};

PageLayout layOut(std::span<const Item> items);

/// A height as it is drawn.
double drawnHeight(float height);

}  // namespace kiv
