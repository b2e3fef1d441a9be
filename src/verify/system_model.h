#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "verify/first_clefs.h"
#include "verify/known_instruments.h"
#include "verify/music_group.h"

namespace kiv::proof {

/// What a conversion remembers from system to system.
struct GroupKnowledge {
  KnownInstruments instruments;
  std::vector<std::pair<float, std::int16_t>> braces;  ///< instruments that had a brace, with the brace's kind
};

/// What a conversion with fitting rest staves knows: the whole group, and the index of the system in it.
struct FittingSystem {
  const MusicGroup& group;
  std::size_t index = 0;
};

/// An item that a result must have; its P2 is the staff there.
struct ExpectedItem {
  Item item;
  Origin origin;
};

/// The result that a system must have.
struct ExpectedPage {
  std::vector<ExpectedItem> items;  ///< in the order of the file
  std::size_t barlines = 0;         ///< of the inputs, braces included: the result has others instead
};

/// Derives the result of one system from the rules alone.
class SystemModel {
 public:
  SystemModel(GroupKnowledge& group, const FirstClefs& firstClefs) : group_(group), firstClefs_(firstClefs) {}

  /// Adds a staff of the report with its items, and the name of its file, which must outlive the model. Staves come in
  /// the order of the report.
  void addStaff(const Record& record, const std::string& file, const std::vector<PageItem>& items);
  /// Collects what a conversion remembers. All staves have been added before.
  void prepare();
  /// The real staves and their bars; only of a system that was prepared without an error.
  MusicSystem music() const;
  /// Adds what a conversion adds.
  void complete(bool showNumbers);
  /// The same with rest staves, braces and brackets that fit the music.
  void complete(bool showNumbers, const FittingSystem& fitting);
  ExpectedPage page() const;

  /// Why the system has no result, as a phrase; "" when it has one.
  const std::string& error() const { return error_; }

 private:
  struct Bar {
    float position = 0;
    std::int16_t kind = 0;
  };

  void fail(const std::string& reason);
  void numberFromOne();
  void collectBars();
  void collectBraces();
  void closeSingleStaff(ModelStaff& staff);
  void addMissingStaves();
  void addFittingStaves(const FittingSystem& fitting);
  void addFittingStaff(const FittingSystem& fitting, std::int16_t instrument);
  void addFittingSignatures(const FittingSystem& fitting, ModelStaff& staff);
  void addFittingRests(const FittingSystem& fitting, ModelStaff& staff);
  void addFittingBraces(const FittingSystem& fitting);
  void finish(bool showNumbers);
  void addKnownBraces();
  void widenSpans();
  void addRestStaff(const KnownInstrument& instrument, std::size_t index);
  int insertionNumber(std::size_t index);
  void addSignatures(const KnownInstrument& instrument, ModelStaff& staff);
  void addTimes(const ModelStaff& reference, ModelStaff& staff);
  void addRests(const ModelStaff& reference, ModelStaff& staff);
  float barLength(const ModelStaff& staff, float beat);
  Item barlineOf(const ModelStaff& staff, const Bar& bar) const;
  void addBarlines();
  void addNumbers();
  void add(ModelStaff& staff, const Item& item);
  void addReplaced(ModelStaff& staff, const Item& barline);

  GroupKnowledge& group_;
  const FirstClefs& firstClefs_;
  std::vector<ModelStaff> staves_;  // in the order in which they were added
  std::vector<Bar> bars_;           // the barlines of the lowest staff
  Item systemBarline_;
  int systemBarlineOrder_ = 0;
  int order_ = 0;
  std::vector<Item> braces_;  // with their staves in the result
  std::string error_;
};

}  // namespace kiv::proof
