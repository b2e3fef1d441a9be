#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "analysis/first_clef_table.h"
#include "verify/known_instruments.h"

namespace kiv::proof {

/// What a run learns from system to system, and never forgets.
struct RunKnowledge {
  KnownInstruments instruments;
  std::vector<std::pair<float, std::int16_t>> braces;  ///< instruments that had a brace, with the brace's kind
};

/// An item that a result must hold: its P2 is the staff there.
struct ExpectedItem {
  Item item;
  Origin origin;
};

/// What the result of a system must be.
struct ExpectedPage {
  std::vector<ExpectedItem> items;  ///< in the order of the file
  bool inOrder = true;              ///< false when a place that is no number leaves the order open
  std::size_t barlines = 0;         ///< of the inputs, braces included: the result has its own in their place
};

/// Thinks out, from the rules alone, what the result of one system must be.
class SystemModel {
 public:
  SystemModel(RunKnowledge& run, const FirstClefTable& firstClefs) : run_(run), firstClefs_(firstClefs) {}

  /// Takes over a staff of the report with its items, in the order of the report.
  void carry(const Record& record, const std::vector<PageItem>& items);
  /// Adds what a conversion adds, once all staves are there.
  void complete(bool showNumbers);
  ExpectedPage page() const;

  /// Why there can be no result, in words; "" when there can.
  const std::string& trouble() const { return trouble_; }

 private:
  struct Bar {
    float position = 0;
    std::int16_t kind = 0;
  };

  void refuse(const std::string& reason);
  void numberFromOne();
  void collectBars();
  void collectBraces();
  void addMissing();
  void addRestStaff(const KnownInstrument& instrument, std::size_t place);
  int placeForStaff(std::size_t place);
  void addSignatures(const KnownInstrument& instrument, ModelStaff& staff);
  void addTimes(const ModelStaff& reference, ModelStaff& staff);
  void addRests(const ModelStaff& reference, ModelStaff& staff);
  float barLength(const ModelStaff& staff, float beat);
  void addBarlines();
  void addNumbers();
  void add(ModelStaff& staff, const Item& item);

  RunKnowledge& run_;
  const FirstClefTable& firstClefs_;
  std::vector<ModelStaff> staves_;  // in the order in which they came
  std::vector<Bar> bars_;           // the barlines of the lowest staff
  Item systemBarline_;
  int systemBarlineOrder_ = 0;
  int order_ = 0;
  std::string trouble_;
};

}  // namespace kiv::proof
