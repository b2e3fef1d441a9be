#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "drawing/chart.h"
#include "drawing/svg.h"

namespace kiv {

/// What is drawn on the cells of a chart.
enum class CellSymbol : std::size_t { present, missing, duplicate, zeroId, moved };

inline constexpr std::size_t cellSymbols = 5;

CellSymbol symbolOf(Presence presence);

/// The styles of all symbols, as CSS.
std::string_view symbolStyle();

/// The upper left corner of a square.
struct CellCorner {
  double x = 0;
  double y = 0;
};

/// Draws the symbol on squares of one size. Symbols are few elements, however many squares there are, because browsers
/// take a second for each thousand of them.
void drawSymbols(SvgWriter& svg, CellSymbol symbol, std::span<const CellCorner> squares, double size);

}  // namespace kiv
