#pragma once

#include <string>

namespace kiv::bench {

/// One system: its staves, the bars of each, and more notes in the last bars to fill the page.
struct PageShape {
  int staves = 0;
  int bars = 0;
  int moreNotes = 0;
};

constexpr PageShape page8{5, 3, 27};      ///< 8 KB
constexpr PageShape page32{20, 3, 110};   ///< 32 KB
constexpr PageShape page131{20, 15, 88};  ///< 131 KB, as long as a page can be that is converted: results are longer

/// The instrument of the lowest staff; the staves above it have the next ones.
constexpr int lowestInstrument = 101;

/// The bytes of a page file of that shape; "" when there is no such page, after a message on standard error.
std::string makePage(const PageShape& shape);

/// The bytes of a page of 3,618 items, 117 KB: one system of a piece of 20 instruments, of which two do not play, other
/// ones from page to page. The same on failure.
std::string makeIncompletePage(int number);

}  // namespace kiv::bench
