#pragma once

#include <cstdint>
#include <map>
#include <vector>

namespace kiv {

/// A number that may be meant where several others were typed.
struct SlipOrigin {
  std::int16_t meant = 0;
  double share = 0;  ///< the logarithm of the shares that all that was typed has among its slips
};

/// The numbers of which at least one of the typed ones is a single slip, none of the typed ones themselves, the
/// likeliest first. Takes the typed ones with their counts, of which only the commonest eight are looked at.
std::vector<SlipOrigin> slipOrigins(const std::map<std::int16_t, int>& typed);

}  // namespace kiv
