// Rest staves, braces and brackets that fit the music of the group.

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "verify/numbers.h"
#include "verify/system_model.h"

namespace kiv::proof {
namespace {

constexpr float clefAfterEdge = 2;
constexpr float keyAfterEdge = 9;

/// P6 of a staff to be added: that of the lowest real staff that belongs above it, else of the highest one.
float par6Beside(float instrument, const MusicSystem& system) {
  const auto& staves = system.staves();
  const auto above = std::find_if(staves.rbegin(), staves.rend(),
                                  [&](const MusicStaff& staff) { return staff.instrument() < instrument; });
  return (above == staves.rend() ? staves.front() : *above).staff()[par::par6];
}

Item restOf(float position, Ticks length) {
  constexpr float noTuplet = -1;
  Item rest(ItemType::rest, 0, position);
  rest[par::duration] = static_cast<float>(inQuarters(length));
  rest[par::tuplet] = noTuplet;
  return rest;
}

}  // namespace

MusicSystem SystemModel::music() const {
  std::vector<MusicStaff> staves;
  for (const ModelStaff& model : staves_) {
    Item staff = model.staff;
    staff[par::staff] = static_cast<float>(model.number);
    std::vector<ModelItem> items = model.items;
    items.insert(items.end(), model.barlines.begin(), model.barlines.end());
    std::sort(items.begin(), items.end(), [](const auto& a, const auto& b) { return a.order < b.order; });
    StaffItems own;
    for (const ModelItem& item : items) {
      own.add(item.item);
    }
    staves.emplace_back(std::move(staff), std::move(own));
  }
  std::vector<MusicBarline> barlines;
  for (const Bar& bar : bars_) {
    if (!std::isnan(bar.position)) {  // such a one bounds nothing
      barlines.push_back({bar.position, bar.kind});
    }
  }
  return {std::move(staves), barlines};
}

void SystemModel::complete(bool showNumbers, const FittingSystem& fitting) {
  if (error_.empty()) {
    addFittingStaves(fitting);
  }
  finish(showNumbers);
  if (error_.empty()) {
    addFittingBraces(fitting);
  }
}

void SystemModel::addFittingStaves(const FittingSystem& fitting) {
  std::vector<std::int16_t> missing;
  for (const KnownInstrument& known : group_.instruments.all()) {
    if (std::none_of(staves_.begin(), staves_.end(),
                     [&](const ModelStaff& staff) { return roundedTo16Bits(staff.instrument()) == known.id; })) {
      missing.push_back(known.id);
    }
  }
  for (const std::int16_t instrument : missing) {
    addFittingStaff(fitting, instrument);
  }
  // The lowest staff is that of the highest identifier.
  for (ModelStaff& staff : staves_) {
    staff.number = 1 + static_cast<int>(std::count_if(staves_.begin(), staves_.end(), [&](const ModelStaff& other) {
                     return other.instrument() > staff.instrument();
                   }));
  }
}

void SystemModel::addFittingStaff(const FittingSystem& fitting, std::int16_t instrument) {
  const MusicSystem& system = fitting.group.systems()[fitting.index];
  const MusicStaff* first = fitting.group.firstStaff(instrument);
  if (first == nullptr) {
    fail("there is no staff that a rest staff of instrument " + std::to_string(instrument) + " could resemble");
    return;
  }
  ModelStaff staff;
  staff.staff = Item(ItemType::staff, 0, system.leftEdge());
  staff.staff[par::size] = first->staff()[par::size];
  staff.staff[par::par6] = par6Beside(instrument, system);
  staff.staff[par::lines] = first->staff()[par::lines];
  staff.staff[par::instrument] = first->staff()[par::instrument];
  staff.staff[par::par11] = first->staff()[par::par11];
  add(staff, staff.staff);
  for (Item name : fitting.group.names(fitting.index, instrument)) {
    name[par::position] += system.leftEdge();
    add(staff, name);
  }
  addFittingSignatures(fitting, staff);
  addFittingRests(fitting, staff);
  staves_.push_back(std::move(staff));
}

void SystemModel::addFittingSignatures(const FittingSystem& fitting, ModelStaff& staff) {
  const float edge = staff.staff[par::position];
  const float instrument = roundedTo16Bits(staff.instrument()).value_or(0);
  float clefKind = 0;
  if (const auto known = fitting.group.clef(fitting.index, instrument)) {
    Item clef(ItemType::clef, 0, edge + clefAfterEdge);
    clef[par::height] = (*known)[par::height];
    clefKind = clef[par::kind] = (*known)[par::kind];
    add(staff, clef);
  }
  const MusicKeys& keys = fitting.group.keys();
  for (const auto& [bar, known] : keys.keys(fitting.index, instrument)) {
    if (bar == 0 && known.fifths == 0) {
      continue;
    }
    Item key(ItemType::keySignature, 0, bar == 0 ? edge + keyAfterEdge : keys.position(fitting.index, bar));
    key[par::key] = static_cast<float>(known.fifths);
    key[par::keyType] = known.type.value_or(clefKind);
    add(staff, key);
  }
  for (const auto& [bar, known] : fitting.group.times(fitting.index)) {
    for (const Item& other : known) {
      Item time(ItemType::timeSignature, 0, other[par::position]);
      for (const int p : {par::height, par::upperNumber, par::lowerNumber}) {
        time[p] = other[p];
      }
      add(staff, time);
    }
  }
}

void SystemModel::addFittingRests(const FittingSystem& fitting, ModelStaff& staff) {
  const MusicSystem& system = fitting.group.systems()[fitting.index];
  const auto& bars = system.bars();
  for (std::size_t b = 0; b < bars.size(); ++b) {
    const BarToFill& bar = fitting.group.bars(fitting.index)[b];
    if (bar.isOneRest()) {
      Item rest = restOf(bars[b].positionOfWholeBarRest(bar.length), bar.length);
      rest[par::kind] = -2;
      add(staff, rest);
      continue;
    }
    const std::vector<Moment> moments = system.momentsOf(bars[b], bar.length);
    Ticks moment = 0;
    for (const Ticks length : restsIn(bar.meter, bar.begin, bar.length)) {
      add(staff, restOf(bars[b].positionOf(moment, moments, bar.length), length));
      moment += length;
    }
  }
}

void SystemModel::addFittingBraces(const FittingSystem& fitting) {
  std::vector<float> instruments;
  for (const ModelStaff& staff : staves_) {
    instruments.push_back(roundedTo16Bits(staff.instrument()).value_or(0));
  }
  std::sort(instruments.begin(), instruments.end(), std::greater<>());
  for (const BraceSpan& span : braceSpans(fitting.group.braces(), instruments)) {
    Item brace(ItemType::barline, static_cast<float>(span.staff), fitting.group.systems()[fitting.index].leftEdge());
    brace[par::spannedStaves] = static_cast<float>(span.staves);
    brace[par::kind] = span.kind;
    braces_.push_back(brace);
  }
}

}  // namespace kiv::proof
