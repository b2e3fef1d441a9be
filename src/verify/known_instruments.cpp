#include "verify/known_instruments.h"

#include "verify/numbers.h"

namespace kiv::proof {
namespace {

constexpr float sizeMark = 1000;
constexpr float leftOfAll = -9999;

/// The rightmost item of a type, the first of several at one position; null when there is none.
const Item* rightmost(const ModelStaff& staff, ItemType type) {
  const Item* found = nullptr;
  float best = leftOfAll;
  for (const ModelItem& model : staff.items) {
    if (model.item.type() == type && model.item[par::position] > best) {
      best = model.item[par::position];
      found = &model.item;
    }
  }
  return found;
}

void learnFrom(const ModelStaff& staff, KnownInstrument& known) {
  if (known.size == 0) {
    known.size = staff.staff[par::size] + sizeMark;
    known.lines = staff.staff[par::lines];
    known.par11 = staff.staff[par::par11];
  }
  if (const Item* key = rightmost(staff, ItemType::keySignature)) {
    known.key = (*key)[par::key];
    known.keyType = (*key)[par::keyType];
  }
  if (const Item* time = rightmost(staff, ItemType::timeSignature)) {
    known.timeUpper = (*time)[par::upperNumber];
    known.timeLower = (*time)[par::lowerNumber];
  }
}

}  // namespace

KnownInstruments::KnownInstruments(const std::vector<Record>& records) {
  for (const Record& record : records) {
    if (indices_.emplace(record.instrument, all_.size()).second) {
      all_.emplace_back().id = record.instrument;
    }
  }
}

void KnownInstruments::add(const KnownInstrument& instrument) {
  indices_.emplace(instrument.id, all_.size());
  all_.push_back(instrument);
}

const KnownInstrument* KnownInstruments::find(std::int16_t id) const {
  const auto found = indices_.find(id);
  return found == indices_.end() ? nullptr : &all_[found->second];
}

void KnownInstruments::learn(const std::vector<ModelStaff>& staves) {
  for (const ModelStaff& staff : staves) {
    const auto id = roundedTo16Bits(staff.instrument());
    const auto known = id && static_cast<float>(*id) == staff.instrument() ? indices_.find(*id) : indices_.end();
    if (known != indices_.end()) {
      learnFrom(staff, all_[known->second]);
    }
  }
}

float KnownInstruments::barlineReach(float instrument) const {
  const KnownInstrument* known = find(roundedTo16Bits(instrument).value_or(0));
  const float lines = known == nullptr ? 0 : known->lines;
  if (lines == 1) {
    return 1;
  }
  return lines == 2 || lines == 3 || lines == 4 || lines == 6 ? 2 * lines + 1 : 0;
}

}  // namespace kiv::proof
