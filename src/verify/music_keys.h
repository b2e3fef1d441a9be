#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <set>
#include <tuple>
#include <utility>
#include <vector>

#include "verify/music_system.h"

namespace kiv::proof {

/// A key signature that a silent instrument has.
struct SilentKey {
  int fifths = 0;
  std::optional<float> type;  ///< P6; nullopt for an instrument that has no signature in the group
};

/// The keys of all instruments of a group, also where they are silent: they change as those that play do. The group is
/// read system by system, and of each only a few numbers are kept.
class MusicKeys {
 public:
  MusicKeys() = default;
  explicit MusicKeys(const std::vector<MusicSystem>& systems);

  /// Reads the next system.
  void read(const MusicSystem& system);
  /// All systems have been read. Only then anything may be asked.
  void finish();

  /// By the bar from which on they count, the keys of an instrument in a system; always that of bar 0, and after it
  /// only changes. Empty for an instrument that has no key signatures while others have some.
  std::map<std::size_t, SilentKey> keys(std::size_t system, float instrument) const;
  /// Whether a system shows no key at its begin, though a staff that plays has had signatures before and should have
  /// accidentals by what the others have shown since, or the same is true of the system before. Whether the key is
  /// another is not known then; it is taken to be the same.
  bool isHidden(std::size_t system) const { return scores_[system].isHidden; }
  /// Where the signatures that count from a bar on stand in a system; there must be some.
  float position(std::size_t system, std::size_t bar) const;

 private:
  /// The last signature of an instrument before a bar of a system, or that it plays there without any.
  struct Sign {
    float instrument = 0;
    std::optional<std::size_t> bar = {};
    int fifths = 0;

    bool operator<(const Sign& other) const {
      return std::tie(instrument, bar, fifths) < std::tie(other.instrument, other.bar, other.fifths);
    }
  };
  using Signs = std::vector<Sign>;  // of a system, by instrument and bar
  /// A bar of a system from which on signatures count.
  struct Change {
    std::size_t bar = 0;
    float position = 0;
    int move = 0;  // by how many fifths all keys move before it
  };
  struct Score {
    const Signs* signs = nullptr;  // one of signs_
    std::vector<Change> changes;   // by bar
    int movedBefore = 0;           // all moves before the system
    bool isHidden = false;

    bool hasChangeAtBegin() const { return !changes.empty() && changes.front().bar == 0; }
  };
  struct Entry {
    std::size_t system = 0;
    int fifths = 0;  // at the begin of that system
  };
  /// From a system on, by how much the key of an instrument is more than all moves so far.
  struct Offset {
    std::size_t system = 0;
    int fifths = 0;
  };
  /// P6 of the signatures of an instrument from a system on that has some.
  struct Types {
    std::size_t system = 0;
    float first = 0;
    float last = 0;
  };

  void remember(float instrument, const std::map<std::size_t, Item>& signatures, bool haveOthers);
  static std::vector<std::pair<float, std::optional<int>>> signsBefore(std::size_t bar, const Signs& signs);
  void lookForKeys(Score& score);
  void move(std::size_t system);
  int moveOf(const Score& score, std::size_t bar) const;
  void enter(std::size_t system, std::size_t bar);
  void setKey(std::size_t system, float instrument, int fifths);
  std::optional<int> keyNow(float instrument) const;
  int fifthsBefore(std::size_t system, float instrument) const;
  std::optional<float> typeOf(std::size_t system, float instrument) const;

  std::set<Signs> signs_;  // of all systems, which mostly have the same; kept until all have been read
  std::vector<Score> scores_;
  std::map<float, Entry> entries_;                // where each instrument first plays
  std::map<float, std::vector<Offset>> offsets_;  // of each instrument, the systems from which on it is another
  std::map<float, std::vector<Types>> types_;     // the same
  std::set<float> signed_;                        // instruments with key signatures
  std::set<float> unsigned_;                      // those without, while others had some, in a system
  std::set<float> pitched_;                       // those with staves of other than one line
  std::set<float> shown_;                         // those that have had a signature so far
  bool isHidden_ = false;                         // the same of isHidden()
  int moved_ = 0;                                 // the moves so far
};

}  // namespace kiv::proof
