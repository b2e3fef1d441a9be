#pragma once

#include <utility>
#include <vector>

#include <rapidcheck.h>

/// A piece of music as the numbers that it is generated from. Every choice of them is a piece, so what has fewer of
/// them, or smaller ones, is a piece again, and a failure is reported with the smallest that shows it.
namespace kiv::test::piece {

using Parameters = std::vector<std::pair<int, int>>;  ///< numbers, and values in halves

/// A note, a rest, a text or anything else that stands in a bar.
struct InnerItem {
  int what = 0;
  int bar = 0;
  int position = 0;  ///< right of the barline, in halves
  Parameters parameters;
};

struct Staff {
  int instrument = 0;
  bool hidden = false;
  int look = 0;  ///< size, lines, P6 and P11
  int clef = 0;  ///< 0 is none; so are the key, the time signature and the brace
  int key = 0;
  int time = 0;
  int brace = 0;
  bool barlines = false;  ///< has barlines of its own, in places of its own
  int beat = 0;           ///< where the first note or rest stands in every bar
  std::vector<InnerItem> items;
};

struct System {
  std::vector<Staff> staves;  ///< from the top down
  std::vector<int> barlines;  ///< the kinds of those after the first one
  int left = 0;
  int edge = 0;       ///< where the staves begin, seen from the first barline
  int gap = 0;        ///< numbers that no staff below the system has
  bool open = false;  ///< if it is a single staff, it has no barline at its left
};

struct Page {
  std::vector<System> systems;  ///< from the top down
  int files = 1;                ///< if it is a single system
  bool loose = false;           ///< has items of staves that are not there
};

struct Piece {
  std::vector<Page> pages;
  int spread = 0;  ///< how far apart the identifiers of the instruments lie
};

/// Any piece.
rc::Gen<Piece> pieces();

}  // namespace kiv::test::piece
