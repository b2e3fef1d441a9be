#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "fit/system.h"

namespace kiv::fit {

/// A key signature of an instrument.
struct Key {
  int fifths = 0;             ///< sharps; below 0 flats
  std::optional<float> type;  ///< its P6; nullopt for an instrument that never has a key signature
};

/// Follows the keys of a group. All instruments that have key signatures change by as many fifths; what is kept of each
/// is by how many its key differs from the group's, which begins with 0.
class KeyTrack {
 public:
  /// Adds the next system. All are added before the first question.
  void add(const System& system);
  /// Must be called once, after all systems were added.
  void finish();

  /// The key signature that an instrument, which does not play in the system with that index, has at its begin;
  /// nullopt for none.
  std::optional<Key> keyAtBegin(std::size_t system, float instrument) const;
  /// The key signatures that it has inside the system, by the positions where those of the others stand.
  std::map<float, Key> keysInside(std::size_t system, float instrument) const;

 private:
  /// Of one instrument in one system, by the bar from which they count.
  struct Played {
    float instrument = 0;
    float lines = 0;
    std::map<std::size_t, Key> keys;
  };
  struct Record {
    std::vector<Played> staves;
    std::map<std::size_t, float> positions;  ///< where the signatures stand, by the bar from which they count
    std::map<std::size_t, int> groupKeys;    ///< from that bar on; always of bar 0
  };
  /// How far an instrument's key is from the group's.
  struct Offset {
    std::size_t system = 0;
    int fifths = 0;
  };
  struct Instrument {
    bool hasKeys = false;    ///< in any system
    bool lacksKeys = false;  ///< in a system in which others have some
    bool isPitched = false;  ///< it has a staff of other than one line
    std::optional<float> firstType;
    std::map<std::size_t, float> types;  ///< the last of each system
    std::optional<Offset> first;
    std::vector<Offset> offsets;  ///< after each system in which it plays
  };

  void learn(const Record& record);
  void follow(std::size_t index);
  int change(const Record& record, std::size_t bar) const;
  void setOffsets(const Record& record, std::size_t index, std::size_t bar);
  /// Whether it has no key signatures although others have: it has shown so, or is percussion.
  static bool hasNone(const Instrument& instrument) {
    return !instrument.hasKeys && (instrument.lacksKeys || !instrument.isPitched);
  }
  const Instrument* withKeys(float instrument) const;
  static Key keyOf(const Instrument& instrument, std::size_t system, int groupKey);

  std::vector<Record> systems_;
  std::map<float, Instrument> instruments_;
  std::map<float, int> offsets_;  ///< while the keys are followed
  int groupKey_ = 0;              ///< the same
};

}  // namespace kiv::fit
