#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "music/bar_faults.h"
#include "music/music_faults.h"
#include "music/staff_faults.h"

namespace kiv {

/// What is wrong with the result of a system.
struct SystemFaults {
  bool lacksTime = false;  ///< no system has a time signature, which is said once
  bool hidesKey = false;   ///< no staff shows a key, though one did before
  std::vector<FaultPlace> displacedBraces;
  std::vector<std::optional<std::size_t>> tooLong;  ///< bars with such notes; nullopt for between bars
  std::vector<UnequalBar> unequal;
  StaffFaults staves;
};

/// Where the bars and staves of a system are. Empty when nobody wants to know.
struct SystemPlaces {
  std::vector<std::pair<float, float>> bars;  ///< from where to where
  std::vector<float> staves;                  ///< their numbers, rest staves first, both from the top down
};

SystemPlaces placesIn(const proof::MusicSystem& system, const std::vector<proof::MusicStaff>& restStaves);

/// Adds them in words, in the order in which people read them. The index is that of the result, whose full name is
/// given.
void addInWords(const SystemFaults& faults, const SystemPlaces& places, const std::string& file, std::size_t index,
                std::vector<MusicFault>& all);

}  // namespace kiv
