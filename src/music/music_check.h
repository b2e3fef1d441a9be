#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "music/bar_faults.h"
#include "music/music_faults.h"
#include "music/result_music.h"
#include "music/system_faults.h"

namespace kiv {

/// The results that a check is about.
struct CheckedResults {
  std::size_t count = 0;
  std::function<CheckedResult(std::size_t)> at;  ///< the one with an index
  bool areAll = true;                            ///< those of all systems
};

/// Compares the results of one conversion with the music, one after the other. Keeps of each only what is wrong with
/// it, and what depends on those after it: an instrument may enter, or show its first key, in the last of them.
class MusicCheck {
 public:
  explicit MusicCheck(FaultPlaces places) : wantsPlaces_(places == FaultPlaces::yes) {}

  /// The result of the next system.
  void add(const ResultMusic& music);
  /// How many there are.
  std::size_t count() const { return count_; }
  /// What is wrong with these results, of which those that were added are the first ones. The others are read here. One
  /// that cannot be read ends the search, which the first fault says. Unless all systems have been seen, the others may
  /// have a time signature, so that none is missed. To be asked once.
  std::vector<MusicFault> finish(Files& files, const CheckedResults& results);

 private:
  struct CheckedStaff {
    std::size_t system = 0;
    RestStaff staff;
    const RestStaffLook* look = nullptr;  // one of looks_
  };

  void addRestStaves(const ResultMusic& music, const std::map<std::size_t, std::vector<Item>>& times,
                     std::size_t system);
  void addRests(const SystemBars& bars, std::size_t system);
  void addWaitingRests();
  void addHiddenKeys();
  void addLooks();
  void addMissingTime(bool areAll);

  bool wantsPlaces_;
  std::size_t count_ = 0;
  proof::MusicKeys keys_;
  proof::MusicLooks entries_;
  std::optional<proof::MusicMeter> meter_;      // in force; nullopt before the first time signature
  std::map<std::size_t, SystemBars> waiting_;   // for that
  std::optional<std::size_t> firstWithRests_;   // the first system with rest staves and bars
  std::set<RestStaffLook> looks_;               // which most rest staves share
  std::deque<CheckedStaff> restStaves_;         // of all systems
  std::map<std::size_t, SystemFaults> faults_;  // of the systems that have some
  std::deque<SystemPlaces> places_;             // of all systems, if wanted
};

}  // namespace kiv
