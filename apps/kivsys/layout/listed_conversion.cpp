#include "apps/kivsys/layout/listed_conversion.h"

#include <nlohmann/json.hpp>

#include "platform/console/native_system.h"

namespace kiv {

std::vector<std::string> ListedConversion::prepare(ConsoleSystem& system, const std::string& typed, bool allowZeroId) {
  if (typed.empty() || isPrepared_) {
    return {};
  }
  auto reasons = readLayoutTable(system, typed, LayoutCells::all, table_);
  if (!reasons.empty()) {
    return reasons;
  }
  isPrepared_ = true;
  pages_ = compareWithTable(system, table_, allowZeroId);
  return {};
}

std::vector<RequiredInstrument> ListedConversion::required() const {
  std::vector<RequiredInstrument> required;
  for (const ListedLook& look : table_.looks) {
    RequiredInstrument& instrument = required.emplace_back();
    instrument.instr = look.id;
    instrument.size = look.size ? MarkedValue(*look.size) : MarkedValue();
    instrument.lines = look.lines.value_or(0);
    instrument.key = look.key.value_or(0);
    if (look.clef) {
      instrument.clef = MarkedValue(look.clef->kind);
      instrument.clefHeight = look.clef->height;
    }
  }
  return required;
}

std::set<std::int16_t> ListedConversion::ids() const {
  std::set<std::int16_t> ids;
  for (const ListedInstrument& listed : table_.instruments) {
    ids.insert(listed.id);
  }
  return ids;
}

std::vector<proof::ListedInstrument> ListedConversion::forProof() const {
  std::vector<proof::ListedInstrument> listed;
  for (const ListedLook& look : table_.looks) {
    proof::ListedInstrument& instrument = listed.emplace_back();
    instrument.id = look.id;
    instrument.size = look.size;
    instrument.lines = look.lines.value_or(0);
    instrument.key = look.key.value_or(0);
    if (look.clef) {
      instrument.clef = look.clef->kind;
      instrument.clefHeight = look.clef->height;
    }
  }
  return listed;
}

void ListedConversion::addSilent(std::vector<Instrument>& instruments) const {
  for (const ListedInstrument& listed : table_.instruments) {
    if (pages_.silent.contains(listed.id)) {
      Instrument& instrument = instruments.emplace_back();
      instrument.id = listed.id;
      instrument.name.full = listed.name;
      instrument.name.abbreviation = listed.abbreviation;
    }
  }
}

nlohmann::ordered_json ListedConversion::asJson() const {
  return {{"path", NativeSystem::toUtf8(table_.path)},
          {"sha256", table_.sha256},
          {"instruments", table_.instruments.size()},
          {"silent", pages_.silent}};
}

}  // namespace kiv
