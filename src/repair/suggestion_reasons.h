#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "repair/group_evidence.h"
#include "repair/staff_assignment.h"

namespace kiv {

/// The ids of all staves, system by system, as they are with the corrections; 0 where nothing is decided.
using DecidedIds = std::vector<std::vector<std::int16_t>>;

/// Says in words why an id is proposed. The texts are in the code page of the pages.
class SuggestionReasons {
 public:
  /// All must outlive the reasons.
  SuggestionReasons(const GroupEvidence& group, const GroupKnowledge& knowledge, const ListedInstruments& listed,
                    const DecidedIds& decided);

  /// The id with the name of the instrument, if a page has one: "110 Violas".
  std::string instrument(std::int16_t id) const;
  /// Why the staff is of the instrument: "between 110 Violas and 112 Double basses, as in 6 of 7 systems; bass clef".
  std::string ofStaff(std::size_t system, std::size_t staff, const KnownInstrument& known) const;
  /// Why a staff stays open.
  std::string ofOpenStaff(const std::vector<std::int16_t>& candidates) const;

 private:
  /// The ids of the staves above and below; 0 at the top and the bottom of the system, and for a staff that is open.
  struct Neighbors {
    std::int16_t above = 0;
    std::int16_t below = 0;

    auto operator<=>(const Neighbors&) const = default;  // NOLINT(modernize-use-nullptr): compared with 0 within
  };
  using NeighborCounts = std::map<Neighbors, std::size_t>;

  void collectNeighborsAndNames();
  Neighbors neighborsOf(std::size_t system, std::size_t staff) const;
  NeighborCounts neighborsElsewhere(std::size_t system, std::int16_t id) const;
  std::string place(std::size_t system, std::size_t staff, std::int16_t id) const;
  LayoutSlot slotWithout(std::size_t system, std::size_t slot) const;
  std::vector<std::string> looks(std::size_t system, std::size_t staff, std::size_t slot) const;

  const GroupEvidence& group_;
  const GroupKnowledge& knowledge_;
  const DecidedIds& decided_;
  std::map<std::int16_t, NeighborCounts> neighbors_;  // of all staves, by id
  std::map<std::int16_t, std::string> names_;
};

}  // namespace kiv
