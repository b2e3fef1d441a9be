#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "verify/music_braces.h"
#include "verify/music_keys.h"
#include "verify/music_looks.h"
#include "verify/music_meter.h"
#include "verify/music_names.h"
#include "verify/music_system.h"

namespace kiv::proof {

/// A bar that a rest staff has to fill.
struct BarToFill {
  MusicMeter meter;
  Ticks length = 0;
  Ticks begin = 0;  ///< of a part of a bar: where in the whole bar it begins

  bool isOneRest() const { return length > meter.length() - leastTime; }
};

/// The time signatures of the highest staff that has the time of most, by the bar from which on they count.
std::map<std::size_t, std::vector<Item>> timesOf(const MusicSystem& system);

/// What follows from the music of a group for staves of instruments that do not play.
class MusicGroup {
 public:
  explicit MusicGroup(std::vector<MusicSystem> systems);

  const std::vector<MusicSystem>& systems() const { return systems_; }
  /// The bars of the system with that index.
  const std::vector<BarToFill>& bars(std::size_t system) const { return bars_[system]; }
  /// The time signatures that rest staves have in a system, by the bar from which on they count.
  std::map<std::size_t, std::vector<Item>> times(std::size_t system) const { return timesOf(systems_[system]); }
  const MusicKeys& keys() const { return keys_; }
  const std::vector<MusicBrace>& braces() const { return braces_; }

  /// Where the instrument first plays; null when it never does.
  const MusicStaff* firstStaff(float instrument) const;
  /// The clef of the instrument where it does not play; nullopt when it never has one.
  std::optional<Item> clef(std::size_t system, float instrument) const { return looks_.clef(system, instrument); }
  /// Its names there, with positions from the left end of the staff; none if no staff of the system has one.
  std::vector<Item> names(std::size_t system, float instrument) const { return names_.names(system, instrument); }

 private:
  void follow();
  void placeParts();

  std::vector<MusicSystem> systems_;
  std::vector<std::vector<BarToFill>> bars_;
  MusicKeys keys_;
  MusicLooks looks_;
  MusicNames names_;
  std::vector<MusicBrace> braces_;
};

}  // namespace kiv::proof
