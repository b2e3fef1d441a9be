#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "verify/page_items.h"
#include "verify/report_records.h"

namespace kiv::proof {

/// The origin of an item of a result.
struct Origin {
  const std::string* file = nullptr;  ///< the name of the input, that of a record; null for an item that is added
  int number = 0;                     ///< the item's number in it

  bool isInput() const { return file != nullptr; }
};

/// An item of an expected result.
struct ModelItem {
  Item item;
  Origin origin;
  int order = 0;  ///< the number of items added before it; decides between items at the same position
};

/// A staff of an expected result, with its one staff item.
struct ModelStaff {
  int number = 0;
  Item staff;
  std::vector<ModelItem> items;     ///< all but barlines and braces
  std::vector<ModelItem> barlines;  ///< braces included; others take their place, but they count when items are sorted

  float instrument() const { return staff[par::instrument]; }
};

/// What a rest staff of an instrument is generated from.
struct KnownInstrument {
  std::int16_t id = 0;
  float size = 0;  ///< plus 1000; 0 until a staff was seen
  float lines = 0;
  float par11 = 0;
  float key = 0;
  float keyType = 0;
  float timeUpper = 0;
  float timeLower = 0;

  float staffSize() const { return size >= 1000 ? size - 1000 : size; }
};

/// The instruments of a report in its order, and what is known of them so far.
class KnownInstruments {
 public:
  explicit KnownInstruments(const std::vector<Record>& records);

  /// Appends an instrument that the report does not list.
  void add(const KnownInstrument& instrument);
  const std::vector<KnownInstrument>& all() const { return all_; }
  /// Null when the report does not list the instrument.
  const KnownInstrument* find(std::int16_t id) const;
  /// Learns from the staves of a system: size, lines and P11 from the first staff of an instrument in the group, key
  /// and time from the rightmost signatures in this system.
  void learn(const std::vector<ModelStaff>& staves);
  /// P11 of the barlines of an instrument: how far they reach beyond a staff of other than five lines.
  float barlineReach(float instrument) const;

 private:
  std::vector<KnownInstrument> all_;
  std::unordered_map<std::int16_t, std::size_t> indices_;  // in all_
};

}  // namespace kiv::proof
