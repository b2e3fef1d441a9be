#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "music/music_faults.h"
#include "verify/music_system.h"

namespace kiv {

/// A result, apart into the music that was there and what a conversion has added.
struct ResultMusic {
  proof::MusicSystem real;
  std::vector<proof::MusicStaff> restStaves;  ///< from the top down, their items by position
  std::vector<FaultPlace> displacedBraces;    ///< that stand away from the left edge
};

/// Reads a result; nullopt when it cannot be read. The real staves have forgotten their notes.
std::optional<ResultMusic> readResult(Files& files, const CheckedResult& result);

/// The same of a system's items; nullopt when there is no staff. The function says of a staff item whether its
/// instrument plays.
std::optional<ResultMusic> musicOf(std::vector<Item> items, const std::function<bool(const Item& staff)>& plays);

}  // namespace kiv
