#include "music/music_faults.h"

#include "music/music_check.h"

namespace kiv {

std::vector<MusicFault> findMusicFaults(Files& files, const std::vector<CheckedResult>& results, FaultPlaces places) {
  return MusicCheck(places).finish(files, {results.size(), [&](std::size_t index) { return results[index]; }});
}

}  // namespace kiv
