#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "diagnostics/instrument_names.h"
#include "diagnostics/page_staves.h"

namespace kiv {

/// A staff of an instrument.
struct InstrumentPlace {
  std::string file;         ///< full name
  std::int16_t system = 0;  ///< its number
  std::string staff;        ///< its number in the file, in general number form
  int item = 0;             ///< the number of its staff item, from 1

  bool operator==(const InstrumentPlace&) const = default;
};

/// An instrument of a group, and what its pages say about it. Values stand in the order of their first appearance; of
/// very many different ones only the first hundred are kept.
struct Instrument {
  int order = 0;        ///< from 1, from the top of a result to its bottom
  std::int16_t id = 0;  ///< 0 stands for all staves without an identifier
  InstrumentName name;
  std::vector<std::int16_t> systems;  ///< those that have it, by number in their order, each once
  std::size_t staves = 0;
  InstrumentPlace first;
  InstrumentPlace last;
  std::vector<ClefForm> clefs;
  std::vector<float> lines;
  std::vector<float> sizes;
  std::vector<float> keys;           ///< numbers of sharps; those of flats are negative
  std::vector<std::int16_t> cuedBy;  ///< the instruments with cue markers that refer to it, by identifier

  bool operator==(const Instrument&) const = default;
};

/// A staff of a system.
struct SystemStaff {
  std::string_view file;  ///< full name
  std::int16_t system = 0;
  std::int16_t instrument = 0;
  const DescribedStaff* staff = nullptr;
};

/// Puts together what the systems of a group say about their instruments.
class InstrumentCollector {
 public:
  /// Adds the staves of one system, from the top down. The names of their files must outlive the collector.
  void add(std::span<const SystemStaff> staves);
  /// The instruments so far, in their order.
  std::vector<Instrument> instruments() const;

 private:
  struct Found {
    Instrument instrument;
    NameCandidates names;
    SystemStaff last;
    int lastItem = 0;
    float lastNumber = 0;
  };

  void addStaff(const SystemStaff& staff);
  void addNames(std::span<const SystemStaff> staves);

  std::map<std::int16_t, Found> found_;
  std::map<std::int16_t, std::set<std::int16_t>> cuedBy_;
};

/// What instruments are called, by identifier; those without a name are left out.
using InstrumentNames = std::map<std::int16_t, std::string>;

/// The names as they are shown, one for each instrument that has one.
InstrumentNames shownNames(const std::vector<Instrument>& instruments);

}  // namespace kiv
