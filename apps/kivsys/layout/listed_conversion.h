#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "apps/kivsys/layout/layout_table.h"
#include "conversion/required_instrument.h"
#include "diagnostics/instruments.h"
#include "verify/listed_instruments.h"

namespace kiv {

/// The table of instruments of a conversion or of its proof.
class ListedConversion {
 public:
  /// Reads the table, if one was typed, and compares the pages with it, both once. Returns what is wrong with the
  /// table.
  std::vector<std::string> prepare(ConsoleSystem& system, const std::string& typed, bool allowZeroId);

  /// Why the pages cannot be converted with the table: it does not have all their instruments.
  std::vector<std::string> refusals() const { return refusalsOf(pages_, table_); }

  bool isGiven() const { return !table_.path.empty(); }
  const LayoutTable& table() const { return table_; }
  /// Whether there are listed instruments that no page has: then there is something to convert.
  bool hasSilent() const { return !pages_.silent.empty(); }
  /// What to say before the run.
  std::string notes(ConsoleSystem& system) const { return isGiven() ? layoutNotes(system, table_, pages_.silent) : ""; }

  std::vector<RequiredInstrument> required() const;
  std::set<std::int16_t> ids() const;
  std::vector<proof::ListedInstrument> forProof() const;
  /// Adds the silent instruments with their names.
  void addSilent(std::vector<Instrument>& instruments) const;
  nlohmann::ordered_json asJson() const;

 private:
  LayoutTable table_;
  ListedPages pages_;
  bool isPrepared_ = false;
};

}  // namespace kiv
