#pragma once

#include <vector>

#include "music/music_faults.h"

namespace kiv {

/// The warnings of these faults.
std::vector<Message> warningsOf(std::vector<MusicFault> faults);

/// The warnings of all faults, in their order.
std::vector<Message> findMusicWarnings(Files& files, const std::vector<CheckedResult>& results);

}  // namespace kiv
