#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "repair/damage_rates.h"
#include "repair/layout_file.h"
#include "repair/reference_layout.h"

namespace kiv {

/// An instrument of the group.
struct KnownInstrument {
  std::int16_t id = 0;
  std::size_t slot = 0;
  double margin = 0;      ///< how much more likely this is the id of the slot than any other, as a logarithm
  bool inferred = false;  ///< no staff has the id: it fills a gap in a regular numbering, or was listed
  bool weak = false;      ///< a single staff has it, or most staves of the slot have ids that are of no instrument

  bool operator==(const KnownInstrument&) const = default;
};

/// What a user says about the instruments of a group, from the top down; empty when nothing is said.
using ListedInstruments = std::vector<ListedInstrument>;

/// The ids of the slots: each the one that explains best what is written there, no two slots having the same. A slot in
/// which nothing is certain has none. A slot may have several instruments, one at a time: then those that stand there
/// too often to be slips follow its own. Where instruments are listed, there are no others.
std::vector<KnownInstrument> identifySlots(const CodedGroup& group, const ReferenceLayout& layout,
                                           const DamageRates& rates, const ListedInstruments& listed);

}  // namespace kiv
