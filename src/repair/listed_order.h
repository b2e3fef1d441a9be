#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

#include "repair/coded_group.h"
#include "repair/layout_file.h"
#include "repair/layout_profile.h"

namespace kiv {

/// What a list of instruments says about the slots of a layout.
class ListedOrder {
 public:
  /// The group, its slots and the ids of those slots that are certain, 0 for the others.
  ListedOrder(const std::vector<ListedInstrument>& listed, const CodedGroup& group,
              const std::vector<LayoutSlot>& slots, const std::vector<std::int16_t>& certain);

  bool isEmpty() const { return index_.empty(); }
  bool contains(std::int16_t id) const { return index_.contains(id); }
  /// How well a listed id fits to a slot in which no staff has it: a logarithm, 0 at best.
  double fit(std::size_t slot, std::int16_t id) const;

 private:
  double orderFit(std::size_t slot, std::size_t index) const;
  double nameFit(const LayoutSlot& slot, const ListedInstrument& instrument) const;

  const std::vector<ListedInstrument>& listed_;
  const CodedGroup& group_;
  const std::vector<LayoutSlot>& slots_;
  std::map<std::int16_t, std::size_t> index_;  // in the list
  std::vector<long> certain_;                  // of each slot: the index of its instrument, -1 when it is not certain
};

}  // namespace kiv
