#include "verify/listed_instruments.h"

#include <set>

namespace kiv::proof {

KnownInstruments knownInstruments(const std::vector<Record>& records, const std::vector<ListedInstrument>& listed,
                                  FirstClefs& firstClefs) {
  constexpr float mark = 1000;
  KnownInstruments known(records);
  for (const ListedInstrument& instrument : listed) {
    if (known.find(instrument.id) != nullptr) {
      continue;
    }
    KnownInstrument silent;
    silent.id = instrument.id;
    silent.size = instrument.size ? *instrument.size + mark : 0;
    silent.lines = instrument.lines;
    silent.key = instrument.key;
    known.add(silent);
    if (instrument.clef) {
      firstClefs.emplace(instrument.id, FirstClef{*instrument.clef + mark, instrument.clefHeight});
    }
  }
  return known;
}

std::vector<Finding> compareWithList(const Records& records, const std::vector<ListedInstrument>& listed) {
  std::set<std::int16_t> known{0};
  for (const ListedInstrument& instrument : listed) {
    known.insert(instrument.id);
  }
  std::vector<Finding> findings;
  for (const Record& record : records.staves()) {
    if (!listed.empty() && known.insert(record.instrument).second) {
      findings.push_back({records.fileOf(record), 0,
                          "has staff " + std::to_string(record.staff) + " of instrument " +
                              std::to_string(record.instrument) + ", which is not listed"});
    }
  }
  return findings;
}

}  // namespace kiv::proof
