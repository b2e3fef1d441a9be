#include "music/music_warnings.h"

#include <utility>

namespace kiv {

std::vector<Message> warningsOf(std::vector<MusicFault> faults) {
  std::vector<Message> warnings;
  warnings.reserve(faults.size());
  for (MusicFault& fault : faults) {
    warnings.push_back(std::move(fault.warning));
  }
  return warnings;
}

std::vector<Message> findMusicWarnings(Files& files, const std::vector<CheckedResult>& results) {
  return warningsOf(findMusicFaults(files, results, FaultPlaces::no));
}

}  // namespace kiv
