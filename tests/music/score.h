#pragma once

#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "tests/music/score_plan.h"

namespace kiv::test {

/// A bar of a score, and what is true of it.
struct ScoreBar {
  float from = 0;         ///< the barline before it, or the last of several
  float to = 0;           ///< the barline after it; of an open one right of all
  double length = 0;      ///< in quarter notes
  double whole = 0;       ///< of a bar of its time
  bool isPickup = false;  ///< or the second part of a bar: counted from its end
  int key = 0;            ///< in fifths, as it sounds
  int upper = 4;
  int lower = 4;
};

struct ScoreInstrument {
  int id = 0;
  score::InstrumentPlan plan;
  float size = 1;
  /// Its key signature where the piece is in that key.
  int keyIn(int key) const;
};

struct ScoreSystem {
  std::string file;
  float left = 0;
  std::vector<ScoreBar> bars;
  std::vector<bool> plays;  ///< by instrument
};

/// A piece whose rest staves are known.
struct Score {
  std::vector<ScoreInstrument> instruments;  ///< from the top down; the first one plays always
  std::vector<ScoreSystem> systems;
  int braced = 0;                            ///< the instruments from the top that a bracket joins; 0 for none
  std::map<std::string, std::string> pages;  ///< a page text for each system
};

/// Shows the pages as text.
void showValue(const Score& score, std::ostream& out);

/// Writes what is planned.
Score scoreOf(const score::Plan& plan);

/// Scores in real times, with pickups, split bars, changes of time and key, double bars of two items, empty bars,
/// cadenzas, several voices, chords, tuplets, cues, grace notes, transposing instruments, percussion and late entries.
/// Every series, counted from 1, is one of other scores.
rc::Gen<Score> scores(int series);

}  // namespace kiv::test
