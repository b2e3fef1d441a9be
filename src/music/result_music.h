#pragma once

#include <optional>
#include <vector>

#include "music/music_warnings.h"
#include "verify/music_system.h"

namespace kiv {

/// A result, apart into the music that was there and what a conversion has added.
struct ResultMusic {
  proof::MusicSystem real;
  std::vector<proof::MusicStaff> restStaves;  ///< from the top down, their items by position
  int displacedBraces = 0;                    ///< that stand away from the left edge
};

/// Reads a result; nullopt when it cannot be read. The real staves have forgotten their notes.
std::optional<ResultMusic> readResult(Files& files, const CheckedResult& result);

}  // namespace kiv
