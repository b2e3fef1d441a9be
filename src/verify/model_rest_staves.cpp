// The rest staves of a system: what stands on the staff of an instrument that is silent.

#include <algorithm>
#include <optional>
#include <set>

#include "base/number.h"
#include "verify/system_model.h"

namespace kiv::proof {
namespace {

constexpr float farAway = 999;

Item itemAt(float type, float position) {
  Item item;
  item.par[par::type] = type;
  item.par[par::position] = position;
  return item;
}

/// The position of the first note or rest behind a barline; nullopt when there is none near enough.
std::optional<float> beatBehind(const ModelStaff& staff, float barline) {
  std::optional<float> beat;
  float best = farAway;
  for (const ModelItem& model : staff.items) {
    const float kind = model.item.par[par::type];
    const float position = model.item.par[par::position];
    if ((kind == type::note || kind == type::rest) && position > barline && position - barline < best) {
      best = position - barline;
      beat = position;
    }
  }
  return beat;
}

/// The time signature in force at a beat; null when none stands before it on the staff, or none near enough.
const Item* timeBefore(const ModelStaff& staff, float beat) {
  const Item* time = nullptr;
  float best = farAway;
  for (const ModelItem& model : staff.items) {
    const float position = model.item.par[par::position];
    if (model.item.par[par::type] == type::timeSignature && position < beat && beat - position < best) {
      best = beat - position;
      time = &model.item;
    }
  }
  return time;
}

}  // namespace

void SystemModel::addMissing() {
  std::set<std::int16_t> present;
  for (const ModelStaff& staff : staves_) {
    present.insert(toInt16(staff.instrument()).value_or(0));
  }
  const auto& instruments = run_.instruments.all();
  for (std::size_t place = 0; place < instruments.size() && trouble_.empty(); ++place) {
    if (!present.contains(instruments[place].id)) {
      addRestStaff(instruments[place], place);
    }
  }
}

/// The number of the staff that is put in: that of the staff of the instrument before it, which moves up with all
/// above.
int SystemModel::placeForStaff(std::size_t place) {
  int top = 0;
  auto wanted = place == 0 ? 0.0F : static_cast<float>(run_.instruments.all()[place - 1].id);
  for (const ModelStaff& staff : staves_) {
    if (staff.instrument() == wanted) {
      wanted = static_cast<float>(staff.number);
    }
    top = std::max(top, staff.number);
  }
  if (place == 0) {
    return top + 1;
  }
  if (wanted == 0 || wanted > static_cast<float>(top)) {
    refuse("there is no place for a rest staff of instrument " + std::to_string(run_.instruments.all()[place].id));
  }
  for (ModelStaff& staff : staves_) {
    staff.number += static_cast<float>(staff.number) >= wanted ? 1 : 0;
  }
  return static_cast<int>(wanted);
}

void SystemModel::addRestStaff(const KnownInstrument& instrument, std::size_t place) {
  ModelStaff staff;
  staff.number = placeForStaff(place);
  const Item& last = staves_.back().staff;
  staff.staff = itemAt(type::staff, place == 0 ? 0 : last.par[par::position]);
  staff.staff.par[par::size] = instrument.staffSize();
  staff.staff.par[par::par6] = place == 0 ? 0 : last.par[par::par6];
  staff.staff.par[par::lines] = instrument.lines;
  staff.staff.par[par::instrument] = instrument.id;
  staff.staff.par[par::par11] = instrument.par11;
  add(staff, staff.staff);
  addSignatures(instrument, staff);
  const auto reference = std::find_if(staves_.begin(), staves_.end(),
                                      [](const ModelStaff& other) { return other.staff.par[par::mark] == 0; });
  if (reference == staves_.end()) {
    refuse("no staff of it can be the model of a rest staff");
    return;
  }
  addTimes(*reference, staff);
  addRests(*reference, staff);
  staves_.push_back(std::move(staff));
}

void SystemModel::addSignatures(const KnownInstrument& instrument, ModelStaff& staff) {
  constexpr float clefBehindStaff = 2;
  constexpr float keyBehindClef = 7;
  constexpr float kindMark = 1000;
  Item clef = itemAt(type::clef, staff.staff.par[par::position] + clefBehindStaff);
  const FirstClefTable::Entry* first = firstClefs_.find(instrument.id);
  if (first != nullptr && first->firstClefKind != 0) {
    clef.par[par::height] = first->firstClefHeight;
    clef.par[par::kind] = first->firstClefKind - kindMark;
  }
  add(staff, clef);
  if (instrument.key != 0) {
    Item key = itemAt(type::keySignature, clef.par[par::position] + keyBehindClef);
    key.par[par::key] = instrument.key;
    key.par[par::keyType] = instrument.keyType;
    add(staff, key);
  }
}

void SystemModel::addTimes(const ModelStaff& reference, ModelStaff& staff) {
  for (const ModelItem& model : reference.items) {
    if (model.item.par[par::type] == type::timeSignature) {
      Item time = itemAt(type::timeSignature, model.item.par[par::position]);
      time.par[par::height] = model.item.par[par::height];
      time.par[par::upperNumber] = model.item.par[par::upperNumber];
      time.par[par::lowerNumber] = model.item.par[par::lowerNumber];
      add(staff, time);
    }
  }
}

void SystemModel::addRests(const ModelStaff& reference, ModelStaff& staff) {
  for (std::size_t bar = 0; bar + 1 < bars_.size() && trouble_.empty(); ++bar) {
    const auto beat = beatBehind(reference, bars_[bar].position);
    if (!beat) {
      refuse("bar " + std::to_string(bar + 1) + " has no note or rest to put one under");
      return;
    }
    Item rest = itemAt(type::rest, *beat);
    rest.par[par::kind] = -2;
    rest.par[par::duration] = barLength(staff, *beat);
    rest.par[par::tuplet] = -1;
    add(staff, rest);
  }
}

/// In quarter notes.
float SystemModel::barLength(const ModelStaff& staff, float beat) {
  constexpr float commonTime = 99;
  constexpr float allaBreve = 98;
  const auto& instruments = run_.instruments.all();
  float upper = 0;
  float lower = 0;
  const auto timed =
      std::find_if(instruments.begin(), instruments.end(), [](const auto& known) { return known.timeUpper != 0; });
  if (const Item* time = timeBefore(staff, beat)) {
    upper = time->par[par::upperNumber];
    lower = time->par[par::lowerNumber];
  } else if (timed != instruments.end()) {
    upper = timed->timeUpper;
    lower = timed->timeLower;
  }
  if (upper == commonTime || upper == allaBreve) {
    return 4;
  }
  if (upper == 0 || lower == 0) {
    refuse("the length of a bar is not known");
    return 0;
  }
  const float wholes = upper / lower;
  return wholes * 4;
}

}  // namespace kiv::proof
