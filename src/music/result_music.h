#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "music/music_faults.h"
#include "verify/music_system.h"

namespace kiv {

/// A result, apart into the music that was there and what a conversion has added.
struct ResultMusic {
  proof::MusicSystem real;
  std::vector<proof::MusicStaff> restStaves;  ///< from the top down
  std::vector<FaultPlace> displacedBraces;    ///< that stand away from the left edge
};

/// Reads a result; nullopt when it cannot be read.
std::optional<ResultMusic> readResult(Files& files, const CheckedResult& result);

/// The same of the bytes of a result. The instruments are those that its system had.
std::optional<ResultMusic> musicOfPage(std::string_view bytes, const std::set<std::int16_t>& playing);

/// The same of a system's items; nullopt when there is no staff. The function says of a staff item whether its
/// instrument plays.
std::optional<ResultMusic> musicOf(const std::vector<Item>& items, const std::function<bool(const Item& staff)>& plays);

}  // namespace kiv
