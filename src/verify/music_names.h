#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "verify/music_system.h"

namespace kiv::proof {

/// The names at the left of the staves of a group, by instrument.
class MusicNames {
 public:
  explicit MusicNames(const std::vector<MusicSystem>& systems);

  /// Those of the instrument in a system where it does not play, with positions from the left end of the staff: the
  /// last ones before, else the first; none if no staff of the system has one.
  std::vector<Item> names(std::size_t system, float instrument) const;

 private:
  struct Names {
    std::size_t system = 0;
    std::vector<Item> names;
  };

  void read(const MusicSystem& system);

  std::map<float, std::vector<Names>> names_;  // of the systems in which they are others than before
  std::vector<bool> hasNames_;                 // by system
};

}  // namespace kiv::proof
