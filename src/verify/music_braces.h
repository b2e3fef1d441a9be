#pragma once

#include <vector>

#include "verify/music_system.h"

namespace kiv::proof {

/// A brace or bracket, by the instruments that it joins.
struct MusicBrace {
  float kind = 0;
  std::vector<float> instruments;  ///< ascending

  bool operator==(const MusicBrace&) const = default;
};

/// The braces and brackets of a group. Where some instruments of one do not play it joins the others. What one joins
/// later is one from the start, unless a system has shown it as several.
std::vector<MusicBrace> bracesOf(const std::vector<MusicSystem>& systems);

/// A brace in a page: its lowest staff, and the number of staves up from there.
struct BraceSpan {
  float kind = 0;
  int staff = 0;
  int staves = 0;
};

/// The braces of a page whose staves are of these instruments, from staff 1 upward.
std::vector<BraceSpan> braceSpans(const std::vector<MusicBrace>& braces, const std::vector<float>& instruments);

}  // namespace kiv::proof
