#pragma once

#include <cstddef>
#include <map>
#include <optional>
#include <vector>

#include "fit/brace_groups.h"
#include "fit/key_track.h"
#include "fit/meter.h"
#include "fit/system.h"
#include "fit/time_track.h"

namespace kiv::fit {

/// A bar that rest staves fill, with its time.
struct TimedBar {
  Meter meter;        ///< in force
  double length = 0;  ///< of its music, in quarter notes
  double offset = 0;  ///< of a part of a bar: where in the whole bar it begins

  /// Whether one whole-bar rest fills it.
  bool isWhole() const;
};

/// What is drawn for an instrument beside its music.
struct Look {
  std::optional<Item> clef;
  std::vector<Item> names;  ///< texts left of the staff; positions are from the staff's left end
};

/// What rest staves of a group are made from: its music, read once from the first system to the last.
class GroupMusic {
 public:
  /// Adds the next system. All are added before the first question.
  void add(const System& system);
  /// Must be called once, after all systems were added.
  void finish();

  /// Of each bar of the system with that index.
  const std::vector<TimedBar>& bars(std::size_t system) const { return systems_[system].timed; }
  const KeyTrack& keys() const { return keys_; }
  const BraceGroups& braces() const { return braces_; }
  /// What an instrument that does not play in the system has there: the last that it had before, else its first.
  Look look(std::size_t system, float instrument) const;
  /// The staff item with which an instrument first appears; it must be one of the group's.
  const Item& firstStaff(float instrument) const { return instruments_.at(instrument).staff; }
  /// Whether real staves of the system have names.
  bool hasNames(std::size_t system) const { return systems_[system].hasNames; }

 private:
  struct BarRecord {
    std::vector<double> lengths;  ///< of each staff that has music in it
    bool opensSection = false;
  };
  struct Record {
    std::vector<BarRecord> bars;
    std::map<std::size_t, Meter> meters;  ///< by the bar from which they count
    std::vector<TimedBar> timed;
    bool closesSection = false;
    bool hasNames = false;
  };
  struct Instrument {
    Item staff;
    Look first;
    std::map<std::size_t, Look> last;  ///< after systems in which it has changed
  };

  void addBars(const System& system, Record& record);
  void addLooks(const System& system, Record& record);
  Meter firstMeter() const;
  void placeParts();

  std::vector<Record> systems_;
  std::map<float, Instrument> instruments_;
  KeyTrack keys_;
  BraceGroups braces_;
};

}  // namespace kiv::fit
