#pragma once

#include <string>
#include <vector>

#include "tests/support/random.h"

/// A piece before it is written down.
namespace kiv::test::orchestra {

struct Time {
  int upper = 4;  ///< 99 and 98 are common time and alla breve
  int lower = 4;

  double unit() const { return upper >= 98 ? 1 : 4.0 / lower; }
  int units() const { return upper >= 98 ? 4 : upper; }
  double length() const { return unit() * units(); }
  bool isCompound() const { return lower == 8 && upper > 3 && upper % 3 == 0; }
};

/// How a bar ends.
enum class Closing { plain, special, twoItems, repeats, none };

/// A bar or a part of one.
struct Measure {
  Time time;
  int key = 0;
  double length = 4;
  bool showsTime = false;
  bool knowsTime = true;  ///< a time signature has been shown
  bool showsKey = false;
  bool isEmpty = false;
  bool endsLine = false;
  Closing closing = Closing::plain;
};

struct Player {
  int id = 0;
  int transposition = 0;  ///< in fifths
  bool hasKeys = true;
  int lines = 5;
  int clef = 0;
  double size = 1;
  std::vector<bool> plays;  ///< by system
};

using Line = std::vector<Measure>;

struct Plan {
  std::vector<Player> players;  ///< from the top down
  std::vector<Line> lines;      ///< systems
};

Plan planOf(RandomGenerator& random);

}  // namespace kiv::test::orchestra
