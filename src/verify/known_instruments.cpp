#include "verify/known_instruments.h"

#include "base/number.h"

namespace kiv::proof {
namespace {

constexpr float marked = 1000;
constexpr float leftOfAll = -9999;

/// The item of a type that stands furthest to the right, the first of several; null when there is none.
const Item* rightmost(const ModelStaff& staff, float type) {
  const Item* found = nullptr;
  float best = leftOfAll;
  for (const ModelItem& model : staff.items) {
    if (model.item.par[par::type] == type && model.item.par[par::position] > best) {
      best = model.item.par[par::position];
      found = &model.item;
    }
  }
  return found;
}

void learnFrom(const ModelStaff& staff, KnownInstrument& known) {
  if (known.size == 0) {
    known.size = staff.staff.par[par::size] + marked;
    known.lines = staff.staff.par[par::lines];
    known.par11 = staff.staff.par[par::par11];
  }
  if (const Item* key = rightmost(staff, type::keySignature)) {
    known.key = key->par[par::key];
    known.keyType = key->par[par::keyType];
  }
  if (const Item* time = rightmost(staff, type::timeSignature)) {
    known.timeUpper = time->par[par::upperNumber];
    known.timeLower = time->par[par::lowerNumber];
  }
}

}  // namespace

KnownInstruments::KnownInstruments(const std::vector<Record>& records) {
  for (const Record& record : records) {
    if (places_.emplace(record.instrument, all_.size()).second) {
      all_.emplace_back().id = record.instrument;
    }
  }
}

const KnownInstrument* KnownInstruments::find(std::int16_t id) const {
  const auto found = places_.find(id);
  return found == places_.end() ? nullptr : &all_[found->second];
}

void KnownInstruments::learn(const std::vector<ModelStaff>& staves) {
  for (const ModelStaff& staff : staves) {
    const auto id = toInt16(staff.instrument());
    const auto known = id && static_cast<float>(*id) == staff.instrument() ? places_.find(*id) : places_.end();
    if (known != places_.end()) {
      learnFrom(staff, all_[known->second]);
    }
  }
}

float KnownInstruments::barlineReach(float instrument) const {
  const KnownInstrument* known = find(toInt16(instrument).value_or(0));
  const float lines = known == nullptr ? 0 : known->lines;
  if (lines == 1) {
    return 1;
  }
  return lines == 2 || lines == 3 || lines == 4 || lines == 6 ? 2 * lines + 1 : 0;
}

}  // namespace kiv::proof
