// The rest staves of a system: the staves of instruments that it does not have.

#include <algorithm>
#include <optional>
#include <set>

#include "verify/numbers.h"
#include "verify/system_model.h"

namespace kiv::proof {
namespace {

constexpr float farAway = 999;

/// An item that gets its staff number when the page is put together.
Item itemAt(ItemType type, float position) {
  return {type, 0, position};
}

/// The position of the first note or rest after a barline; nullopt when there is none near enough.
std::optional<float> beatAfter(const ModelStaff& staff, float barline) {
  std::optional<float> beat;
  float best = farAway;
  for (const ModelItem& model : staff.items) {
    const ItemType type = model.item.type();
    const float position = model.item[par::position];
    if ((type == ItemType::note || type == ItemType::rest) && position > barline && position - barline < best) {
      best = position - barline;
      beat = position;
    }
  }
  return beat;
}

/// The time signature in force at a beat; null when the staff has none before it, or none near enough.
const Item* timeBefore(const ModelStaff& staff, float beat) {
  const Item* time = nullptr;
  float best = farAway;
  for (const ModelItem& model : staff.items) {
    const float position = model.item[par::position];
    if (model.item.type() == ItemType::timeSignature && position < beat && beat - position < best) {
      best = beat - position;
      time = &model.item;
    }
  }
  return time;
}

}  // namespace

void SystemModel::addMissingStaves() {
  std::set<std::int16_t> present;
  for (const ModelStaff& staff : staves_) {
    present.insert(roundedTo16Bits(staff.instrument()).value_or(0));
  }
  const auto& instruments = group_.instruments.all();
  for (std::size_t i = 0; i < instruments.size() && error_.empty(); ++i) {
    if (!present.contains(instruments[i].id)) {
      addRestStaff(instruments[i], i);
    }
  }
}

/// The number of a staff to be inserted: that of the staff of the instrument before it, which moves up with all staves
/// above.
int SystemModel::insertionNumber(std::size_t index) {
  int top = 0;
  auto wanted = index == 0 ? 0.0F : static_cast<float>(group_.instruments.all()[index - 1].id);
  for (const ModelStaff& staff : staves_) {
    if (staff.instrument() == wanted) {
      wanted = static_cast<float>(staff.number);
    }
    top = std::max(top, staff.number);
  }
  if (index == 0) {
    return top + 1;
  }
  if (wanted == 0 || wanted > static_cast<float>(top)) {
    fail("there is no place for a rest staff of instrument " + std::to_string(group_.instruments.all()[index].id));
  }
  for (ModelStaff& staff : staves_) {
    staff.number += static_cast<float>(staff.number) >= wanted ? 1 : 0;
  }
  return static_cast<int>(wanted);
}

/// Barlines of the lowest staff that span no staff span it from then on.
void SystemModel::widenSpans() {
  for (ModelStaff& staff : staves_) {
    for (ModelItem& barline : staff.barlines) {
      float& span = barline.item[par::spannedStaves];
      span = staff.number == 1 && span == 0 ? 1 : span;
    }
  }
}

void SystemModel::addRestStaff(const KnownInstrument& instrument, std::size_t index) {
  widenSpans();
  ModelStaff staff;
  staff.number = insertionNumber(index);
  const Item& last = staves_.back().staff;
  staff.staff = itemAt(ItemType::staff, index == 0 ? 0 : last[par::position]);
  staff.staff[par::size] = instrument.staffSize();
  staff.staff[par::par6] = index == 0 ? 0 : last[par::par6];
  staff.staff[par::lines] = instrument.lines;
  staff.staff[par::instrument] = instrument.id;
  staff.staff[par::par11] = instrument.par11;
  add(staff, staff.staff);
  addSignatures(instrument, staff);
  for (std::size_t b = 1; b < bars_.size(); ++b) {
    addReplaced(staff, barlineOf(staff, bars_[b]));
  }
  const auto reference =
      std::find_if(staves_.begin(), staves_.end(), [](const ModelStaff& other) { return other.staff[par::mark] == 0; });
  if (reference == staves_.end()) {
    fail("no staff of it can be the model of a rest staff");
    return;
  }
  addTimes(*reference, staff);
  addRests(*reference, staff);
  staves_.push_back(std::move(staff));
}

void SystemModel::addSignatures(const KnownInstrument& instrument, ModelStaff& staff) {
  constexpr float clefAfterStaff = 2;
  constexpr float keyAfterClef = 7;
  Item clef = itemAt(ItemType::clef, staff.staff[par::position] + clefAfterStaff);
  if (const auto first = firstClefs_.find(instrument.id); first != firstClefs_.end() && first->second.isKnown()) {
    clef[par::height] = first->second.height;
    clef[par::kind] = first->second.kind();
  }
  add(staff, clef);
  if (instrument.key != 0) {
    Item key = itemAt(ItemType::keySignature, clef[par::position] + keyAfterClef);
    key[par::key] = instrument.key;
    key[par::keyType] = instrument.keyType;
    add(staff, key);
  }
}

void SystemModel::addTimes(const ModelStaff& reference, ModelStaff& staff) {
  for (const ModelItem& model : reference.items) {
    if (model.item.type() == ItemType::timeSignature) {
      Item time = itemAt(ItemType::timeSignature, model.item[par::position]);
      time[par::height] = model.item[par::height];
      time[par::upperNumber] = model.item[par::upperNumber];
      time[par::lowerNumber] = model.item[par::lowerNumber];
      add(staff, time);
    }
  }
}

void SystemModel::addRests(const ModelStaff& reference, ModelStaff& staff) {
  for (std::size_t bar = 0; bar + 1 < bars_.size() && error_.empty(); ++bar) {
    const auto beat = beatAfter(reference, bars_[bar].position);
    if (!beat) {
      fail("bar " + std::to_string(bar + 1) + " has no note or rest to put one under");
      return;
    }
    Item rest = itemAt(ItemType::rest, *beat);
    rest[par::kind] = -2;
    rest[par::duration] = barLength(staff, *beat);
    rest[par::tuplet] = -1;
    add(staff, rest);
  }
}

/// In quarter notes.
float SystemModel::barLength(const ModelStaff& staff, float beat) {
  constexpr float commonTime = 99;
  constexpr float allaBreve = 98;
  const auto& instruments = group_.instruments.all();
  float upper = 0;
  float lower = 0;
  const auto timed =
      std::find_if(instruments.begin(), instruments.end(), [](const auto& known) { return known.timeUpper != 0; });
  if (const Item* time = timeBefore(staff, beat)) {
    upper = (*time)[par::upperNumber];
    lower = (*time)[par::lowerNumber];
  } else if (timed != instruments.end()) {
    upper = timed->timeUpper;
    lower = timed->timeLower;
  }
  if (upper == commonTime || upper == allaBreve) {
    return 4;
  }
  if (upper == 0 || lower == 0) {
    fail("the length of a bar is not known");
    return 0;
  }
  const float wholes = upper / lower;
  return wholes * 4;
}

}  // namespace kiv::proof
