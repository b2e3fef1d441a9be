#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "base/hash_index.h"
#include "base/numbered_texts.h"
#include "diagnostics/page_staves.h"

namespace kiv {

/// A cue marker of a staff.
struct CueEvidence {
  int item = 0;                 ///< its number in the file, from 1
  std::int16_t instrument = 0;  ///< the instrument that it refers to

  bool operator==(const CueEvidence&) const = default;
};

/// What a page says about one staff: all evidence of its instrument but its cue markers. What it does not say is empty.
struct StaffEvidence {
  std::string_view file;         ///< full name
  std::string_view staff;        ///< its number in the file, in general number form
  int item = 0;                  ///< the number of its staff item, from 1; 0 when the page does not hold it any more
  std::int16_t id = 0;           ///< the instrument identifier as it stands in the page, not negative
  std::string_view name;         ///< the text left of it
  std::optional<ClefForm> clef;  ///< the first one
  std::optional<float> lines;
  std::optional<float> size;
  std::optional<float> key;          ///< the first one: a number of sharps; one of flats is negative
  std::optional<float> brace;        ///< what the brace or bracket that begins at the staff spans
  std::optional<float> noteRange;    ///< of its notes on the average, in ranges of three staff steps
  std::optional<float> shownNumber;  ///< the instrument number that the page shows at the staff
};

/// The systems of a group in the order of its pages, with the evidence of their staves. There are very many staves, and
/// most of an instrument say the same, so that is kept once.
class GroupEvidence {
 public:
  /// Begins the next system.
  void addSystem(std::int16_t number);
  /// Adds a staff below those that the system has.
  void addStaff(const StaffEvidence& staff, std::span<const CueEvidence> cues);

  /// The number of systems.
  std::size_t size() const { return systems_.size(); }
  bool empty() const { return systems_.empty(); }
  std::int16_t number(std::size_t system) const { return systems_[system].number; }
  std::size_t staffCount(std::size_t system) const;
  /// A staff of a system, from the top down. The texts are those of the group.
  StaffEvidence staff(std::size_t system, std::size_t staff) const;
  /// Its cue markers in the order of the file.
  std::span<const CueEvidence> cues(std::size_t system, std::size_t staff) const;

 private:
  struct System {
    std::int16_t number = 0;
    std::uint32_t firstStaff = 0;
    std::uint32_t file = 0;  // of its first staff
  };
  static constexpr std::size_t valueCount = 8;
  /// What staves have in common, its numbers as their bits: equal ones look alike in every text.
  struct Look {
    std::uint32_t fileStep = 0;  // from the file of the system's first staff; wraps around
    std::uint32_t staff = 0;     // a text
    std::uint32_t name = 0;      // a text
    std::int16_t id = 0;
    std::uint16_t known = 0;  // of the values, a bit for each
    std::array<std::uint32_t, valueCount> values{};

    bool operator==(const Look&) const = default;
  };
  struct Staff {
    std::uint32_t look = 0;
    std::int32_t item = 0;
  };
  /// A staff with cue markers.
  struct CuedStaff {
    std::uint32_t staff = 0;
    std::uint32_t firstCue = 0;
  };

  static std::array<std::optional<float>, valueCount> valuesOf(const StaffEvidence& staff);
  static std::size_t hashOf(const Look& look);
  Look lookOf(const StaffEvidence& staff, std::uint32_t fileStep);
  std::uint32_t numberOf(const Look& look);

  NumberedTexts files_;
  NumberedTexts texts_;  // names and numbers of staves
  std::deque<Look> looks_;
  HashIndex lookIndex_;
  std::vector<System> systems_;
  std::deque<Staff> staves_;  // of all systems
  std::vector<CuedStaff> cuedStaves_;
  std::vector<CueEvidence> cues_;
};

}  // namespace kiv
