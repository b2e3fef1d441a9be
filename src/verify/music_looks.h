#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "verify/music_system.h"

namespace kiv::proof {

/// What is drawn at the left of the staves of a group, by instrument. The group is read once; a question takes the same
/// time however long the group is.
class MusicLooks {
 public:
  explicit MusicLooks(const std::vector<MusicSystem>& systems);

  /// The index of the system in which the instrument first plays, and that of its staff there; nullopt when it never
  /// does.
  std::optional<std::pair<std::size_t, std::size_t>> entry(float instrument) const;
  /// The clef of the instrument in a system where it does not play: the last one before, else the first; nullopt when
  /// it never has one.
  std::optional<Item> clef(std::size_t system, float instrument) const;
  /// The same of its names, with positions from the left end of the staff; none if no staff of the system has one.
  std::vector<Item> names(std::size_t system, float instrument) const;

 private:
  struct Clefs {
    std::size_t system = 0;
    Item first;
    Item last;
  };
  struct Names {
    std::size_t system = 0;
    std::vector<Item> names;
  };
  struct Player {
    std::pair<std::size_t, std::size_t> entry;
    std::vector<Clefs> clefs;  ///< of the systems whose last one is another than before
    std::vector<Names> names;  ///< of the systems in which they are others than before
  };

  void read(std::size_t index, const MusicSystem& system);
  void readStaff(std::size_t index, const MusicStaff& staff, Player& player);

  std::map<float, Player> players_;
  std::vector<bool> hasNames_;  ///< by system
};

}  // namespace kiv::proof
