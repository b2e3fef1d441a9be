#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "apps/kivsys/output/outcome_json.h"
#include "diagnostics/clef_word.h"
#include "diagnostics/instruments.h"
#include "platform/machine.h"

namespace kiv {

/// The word for a key: "2#", "1b", "0".
std::string keyWord(float key);

/// The instruments as a table for a terminal.
std::string instrumentTable(Machine& machine, const std::vector<Instrument>& instruments);

/// The instruments as comma-separated values in UTF-8, with a line of heads.
std::string instrumentCsv(Machine& machine, const std::vector<Instrument>& instruments);

/// An instrument, which must outlive the object; what is not known is null.
LongObject jsonOf(const Instrument& instrument);

/// The instruments, which must outlive it.
AddElements elementsOf(const std::vector<Instrument>& instruments);

/// "101 (Flute), 102 (Oboe)": the instruments that have a name, those beyond the limit only counted; "" for none.
std::string namesInWords(const std::vector<Instrument>& instruments, std::size_t limit);

}  // namespace kiv
