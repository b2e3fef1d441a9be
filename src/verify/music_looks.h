#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "verify/music_system.h"

namespace kiv::proof {

/// The staves of a group and their clefs, by instrument. The group is read once; a question takes the same
/// time however long the group is. Of each system only changes are kept.
class MusicLooks {
 public:
  MusicLooks() = default;
  explicit MusicLooks(const std::vector<MusicSystem>& systems);

  /// Reads the next system.
  void read(const MusicSystem& system);

  /// The index of the system in which the instrument first plays, and that of its staff there; nullopt when it never
  /// does.
  std::optional<std::pair<std::size_t, std::size_t>> entry(float instrument) const;
  /// The staff item of its staff there; null when it never plays.
  const Item* firstStaff(float instrument) const;
  /// Whether the instrument plays in a system before this one.
  bool hasPlayed(std::size_t system, float instrument) const {
    const auto first = entry(instrument);
    return first && first->first < system;
  }
  /// The clef of the instrument in a system where it does not play: the last one before, else the first; nullopt when
  /// it never has one.
  std::optional<Item> clef(std::size_t system, float instrument) const;

 private:
  struct Clefs {
    std::size_t system = 0;
    Item first;
    Item last;
  };
  struct Player {
    std::pair<std::size_t, std::size_t> entry;
    Item staff;                ///< of the entry
    std::vector<Clefs> clefs;  ///< of the systems whose last one is another than before
  };

  void readClefs(const MusicStaff& staff, std::vector<Clefs>& clefs) const;

  std::map<float, Player> players_;
  std::size_t systems_ = 0;  ///< that were read
};

}  // namespace kiv::proof
