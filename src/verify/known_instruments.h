#pragma once

#include <cstdint>
#include <string>
#include <unordered_map>
#include <vector>

#include "verify/page_items.h"
#include "verify/report_records.h"

namespace kiv::proof {

/// Where an item of a result comes from.
struct Origin {
  std::string file;  ///< the input; "" for an item that is added
  int number = 0;    ///< the item's number in it
};

/// An item of a result that is being thought out.
struct ModelItem {
  Item item;
  Origin origin;
  int order = 0;  ///< when it came; decides between items at the same place
};

/// A staff of such a result, with the one staff item that it has.
struct ModelStaff {
  int number = 0;
  Item staff;
  std::vector<ModelItem> items;  ///< all but barlines and braces
  std::vector<Item> barlines;    ///< those that it came with, braces included

  float instrument() const { return staff.par[par::instrument]; }
};

/// What a rest staff of an instrument copies.
struct KnownInstrument {
  std::int16_t id = 0;
  float size = 0;  ///< raised by 1000; 0 as long as no staff was seen
  float lines = 0;
  float par11 = 0;
  float key = 0;
  float keyType = 0;
  float timeUpper = 0;
  float timeLower = 0;

  float staffSize() const { return size >= 1000 ? size - 1000 : size; }
};

/// The instruments of a report in the order in which it names them, and what was seen of them so far.
class KnownInstruments {
 public:
  explicit KnownInstruments(const std::vector<Record>& records);

  const std::vector<KnownInstrument>& all() const { return all_; }
  /// Null when the report does not name the instrument.
  const KnownInstrument* find(std::int16_t id) const;
  /// Takes in the staves of a system: size, lines and P11 from the first staff ever, key and time from the rightmost
  /// signatures of this one.
  void learn(const std::vector<ModelStaff>& staves);
  /// P11 of the barlines of an instrument: how far they reach beyond a staff of other than five lines.
  float barlineReach(float instrument) const;

 private:
  std::vector<KnownInstrument> all_;
  std::unordered_map<std::int16_t, std::size_t> places_;
};

}  // namespace kiv::proof
