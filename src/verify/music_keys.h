#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "verify/music_system.h"

namespace kiv::proof {

/// A key signature that a silent instrument has.
struct SilentKey {
  int fifths = 0;
  std::optional<float> type;  ///< P6; nullopt for an instrument that has no signature in the group
};

/// The keys of all instruments of a group, also where they are silent: they change as those that play do.
class MusicKeys {
 public:
  explicit MusicKeys(const std::vector<MusicSystem>& systems);

  /// By the bar from which on they count, the keys of an instrument in a system; always that of bar 0, and after it
  /// only changes. Empty for an instrument that has no key signatures while others have some.
  std::map<std::size_t, SilentKey> keys(std::size_t system, float instrument) const;
  /// Whether a system shows no key at its begin, though a staff that plays has had signatures before and should have
  /// accidentals by what the others have shown since, or the same is true of the system before. Whether the key is
  /// another is not known then; it is taken to be the same.
  bool isHidden(std::size_t system) const { return scores_[system].isHidden; }
  /// Where the signatures that count from a bar on stand in a system.
  float position(std::size_t system, std::size_t bar) const { return scores_[system].positions.at(bar); }

 private:
  using Signatures = std::map<float, std::map<std::size_t, Item>>;  // of each instrument the last ones before each bar
  struct Score {
    Signatures signatures;
    std::map<std::size_t, float> positions;
    std::map<std::size_t, int> moves;  // by how many fifths all keys move before a bar
    std::map<float, int> before;       // the keys of the instruments met before the system
    bool isHidden = false;
    int movedBefore = 0;  // all moves before the system
  };
  struct Entry {
    std::size_t system = 0;
    int fifths = 0;  // at the begin of that system
  };

  void read(const MusicSystem& system);
  void lookForKeys(Score& score);
  void move(std::size_t system);
  int moveOf(const Score& score, std::size_t bar) const;
  void enter(std::size_t system, std::size_t bar);
  int fifthsBefore(std::size_t system, float instrument) const;
  std::optional<float> typeOf(std::size_t system, float instrument) const;

  /// P6 of the signatures of an instrument in a system that has some.
  struct Types {
    std::size_t system = 0;
    float first = 0;
    float last = 0;
  };

  std::vector<Score> scores_;
  std::map<float, Entry> entries_;             // where each instrument first plays
  std::map<float, std::vector<Types>> types_;  // of each instrument, by system
  std::set<float> signed_;                     // instruments with key signatures
  std::set<float> unsigned_;                   // those without, while others had some, in a system
  std::set<float> pitched_;                    // those with staves of other than one line
  std::map<float, int> now_;                   // the keys while they are followed
  std::set<float> shown_;                      // those that have had a signature so far
  bool isHidden_ = false;                      // the same of isHidden()
  int moved_ = 0;                              // the moves so far
};

}  // namespace kiv::proof
