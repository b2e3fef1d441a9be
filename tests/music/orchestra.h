#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace kiv::test {

/// What is true of a bar of an orchestra's piece.
struct OrchestraBar {
  float from = 0;     ///< the barline before it, or the last of several
  float to = 0;       ///< the barline after it; of an open bar right of all
  double length = 0;  ///< in quarter notes; of an empty bar that of the time in force
  double whole = 0;   ///< of a bar of the time in force; 0 before there is one
};

struct OrchestraSystem {
  std::vector<OrchestraBar> bars;
  std::set<std::int16_t> playing;  ///< instruments
};

/// Pages of real music for several instruments.
struct Orchestra {
  std::map<std::string, std::string> pages;  ///< page texts by file
  std::vector<OrchestraSystem> systems;
  std::vector<std::int16_t> instruments;
};

/// The pages as text, for whoever looks into a failure.
std::string asText(const Orchestra& orchestra);

/// The piece with that number; the same in every run. Pieces are in all usual times, with pickups, changes of time and
/// key within systems and between them, repeats, double bars of one item and two, cadenzas, bars that a barline or the
/// end of a system splits, empty bars, several voices, chords, tuplets, cues, grace notes, transposing instruments,
/// percussion, late entries, staves without music in a bar, and pages of several systems or files.
Orchestra orchestraOf(std::uint32_t number);

/// The same piece with errors: items that are missing, that stand elsewhere, and that last longer or shorter. Staves
/// disagree in it, and what is said of its bars is no longer true.
Orchestra withErrors(const Orchestra& orchestra, std::uint32_t number);

}  // namespace kiv::test
