#include "conversion/set_staff_attributes.h"

#include <unordered_map>

namespace kiv {
namespace {

constexpr float leftOfAnything = -9999;

bool isStaffOrSign(ItemType type) {
  return type == ItemType::staff || type == ItemType::clef || type == ItemType::keySignature ||
         type == ItemType::timeSignature;
}

/// The rightmost item of a kind on a staff; of several at its position the first.
struct Rightmost {
  int item = 0;
  float position = leftOfAnything;

  void update(const ItemTable& items, int i) {
    if (items.itemPar(i, par::position) > position) {
      position = items.itemPar(i, par::position);
      item = i;
    }
  }
};

struct StaffState {
  Rightmost clef;
  Rightmost key;
  Rightmost time;
};

std::unordered_map<float, StaffState> stateAtTheRightEnd(const ItemTable& items) {
  std::unordered_map<float, StaffState> states;
  for (const int i : items.signRows()) {
    const ItemType type = items.type(i);
    if (!isStaffOrSign(type)) {
      continue;
    }
    StaffState& state = states[items.itemPar(i, par::staff)];
    if (type == ItemType::clef) {
      state.clef.update(items, i);
    } else if (type == ItemType::keySignature) {
      state.key.update(items, i);
    } else if (type == ItemType::timeSignature) {
      state.time.update(items, i);
    }
  }
  return states;
}

void updateEntry(const ItemTable& items, const StaffState& state, OrderEntry& entry) {
  if (const int clef = state.clef.item) {
    entry.clef = MarkedValue(items.itemPar(clef, par::kind));
    entry.clefHeight = items.itemPar(clef, par::height);
  }
  if (const int key = state.key.item) {
    entry.key = items.itemPar(key, par::key);
    entry.keyType = items.itemPar(key, par::keyType);
  }
  if (const int time = state.time.item) {
    entry.timeUp = items.itemPar(time, par::upperNumber);
    entry.timeDn = items.itemPar(time, par::lowerNumber);
  }
}

}  // namespace

void setStaffAttributes(const ItemTable& items, OrderTable& order) {
  const auto states = stateAtTheRightEnd(items);
  for (const int i : items.signRows()) {
    const int k = isStaff(items, i) ? order.find(items.itemPar(i, par::instrument)) : 0;
    if (k == 0) {
      continue;
    }
    OrderEntry& entry = order.entry(k);
    if (!entry.size.isKnown()) {
      entry.size = MarkedValue(items.itemPar(i, par::size));
      entry.lines = items.itemPar(i, par::lines);
      entry.par11 = items.itemPar(i, par::par11);
    }
    updateEntry(items, states.at(items.itemPar(i, par::staff)), entry);
  }
}

}  // namespace kiv
