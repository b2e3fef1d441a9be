#include "music/music_warnings.h"

#include <utility>

namespace kiv {

std::vector<Message> findMusicWarnings(Files& files, const std::vector<CheckedResult>& results) {
  std::vector<Message> warnings;
  for (MusicFault& fault : findMusicFaults(files, results)) {
    warnings.push_back(std::move(fault.warning));
  }
  return warnings;
}

}  // namespace kiv
