#include "drawing/chart_symbols.h"

namespace kiv {
namespace {

/// A part of a symbol, in a square of 10 by 10.
struct Layer {
  CellSymbol symbol;
  const char* className;
  /// Lines from point to point, the first of which is where the path starts. An empty point starts another.
  std::vector<CellCorner> points;
  bool closed;
};

constexpr CellCorner gap{-1, -1};

// Each symbol differs in its shape too, so that a print without color is readable.
const std::vector<Layer>& layers() {
  static const std::vector<Layer> all = {
      {CellSymbol::present, "present", {{1, 1}, {9, 1}, {9, 9}, {1, 9}}, true},
      {CellSymbol::missing, "missing", {{1, 1}, {9, 1}, {9, 9}, {1, 9}}, true},
      {CellSymbol::missing,
       "rest",
       {{2, 4}, {8, 4}, {8, 4.5}, {6.8, 4.5}, {6.8, 6.2}, {3.2, 6.2}, {3.2, 4.5}, {2, 4.5}},
       true},
      {CellSymbol::duplicate, "duplicate", {{1, 1}, {9, 1}, {9, 9}, {1, 9}}, true},
      {CellSymbol::duplicate, "hatch", {{1, 9}, {9, 1}, gap, {1, 5}, {5, 1}, gap, {5, 9}, {9, 5}}, false},
      {CellSymbol::zeroId, "zero", {{1, 1}, {9, 1}, {9, 9}, {1, 9}}, true},
      {CellSymbol::zeroId, "nothing", {{5, 3}, {7, 5}, {5, 7}, {3, 5}}, true},
      {CellSymbol::moved,
       "moved",
       {{5, 1.6}, {8, 4.6}, {5.9, 4.6}, {5.9, 5.4}, {8, 5.4}, {5, 8.4}, {2, 5.4}, {4.1, 5.4}, {4.1, 4.6}, {2, 4.6}},
       true}};
  return all;
}

/// Relative coordinates, which are short.
std::string pathOf(const Layer& layer, std::span<const CellCorner> squares, double size) {
  const double scale = size / 10;
  std::string path;
  for (const CellCorner& square : squares) {
    const CellCorner* previous = nullptr;
    for (const CellCorner& point : layer.points) {
      if (point.x < 0) {
        previous = nullptr;
        continue;
      }
      const CellCorner to = previous == nullptr
                                ? CellCorner{square.x + point.x * scale, square.y + point.y * scale}
                                : CellCorner{(point.x - previous->x) * scale, (point.y - previous->y) * scale};
      path += (previous == nullptr ? "M" : "l") + svgNumber(to.x) + " " + svgNumber(to.y);
      previous = &point;
    }
    path += layer.closed ? "z" : "";
  }
  return path;
}

}  // namespace

CellSymbol symbolOf(Presence presence) {
  switch (presence) {
    case Presence::present:
      return CellSymbol::present;
    case Presence::missing:
      return CellSymbol::missing;
    case Presence::duplicate:
      return CellSymbol::duplicate;
    case Presence::zeroId:
      break;
  }
  return CellSymbol::zeroId;
}

std::string_view symbolStyle() {
  return R"(.present { fill: #2b6f6a; }
.missing { fill: #fbe6b8; stroke: #c9a13b; stroke-width: 0.2; }
.rest { fill: #7a5c10; }
.duplicate { fill: #c0392b; }
.hatch { fill: none; stroke: #fff; stroke-width: 0.3; }
.zero { fill: #fff; stroke: #7d3c98; stroke-width: 0.5; }
.nothing { fill: none; stroke: #7d3c98; stroke-width: 0.3; }
.moved { fill: #fff; stroke: #222; stroke-width: 0.15; }
)";
}

void drawSymbols(SvgWriter& svg, CellSymbol symbol, std::span<const CellCorner> squares, double size) {
  if (squares.empty()) {
    return;
  }
  for (const Layer& layer : layers()) {
    if (layer.symbol == symbol) {
      svg.leaf("path", {{"class", layer.className}, {"d", pathOf(layer, squares, size)}});
    }
  }
}

}  // namespace kiv
