#include "conversion/set_staff_attributes.h"

#include <unordered_map>

namespace kiv {
namespace {

constexpr float marker = 1000;  // added to sizes and clefs, so that 0 is none
constexpr float leftOfAnything = -9999;

/// The rightmost item of a kind on a staff; of several at its position the first.
struct Rightmost {
  int item = 0;
  float position = leftOfAnything;

  void take(const ItemTable& items, int i) {
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
  for (int i = 1; i <= items.itemCount(); ++i) {
    const float type = items.itemPar(i, par::type);
    StaffState& state = states[items.itemPar(i, par::staff)];
    if (type == type::clef) {
      state.clef.take(items, i);
    } else if (type == type::keySignature) {
      state.key.take(items, i);
    } else if (type == type::timeSignature) {
      state.time.take(items, i);
    }
  }
  return states;
}

void takeState(const ItemTable& items, const StaffState& state, OrderEntry& entry) {
  if (const int clef = state.clef.item) {
    entry.clef = items.itemPar(clef, par::kind) + marker;
    entry.hite = items.itemPar(clef, par::height);
  }
  if (const int key = state.key.item) {
    entry.key = items.itemPar(key, par::key);
    entry.type = items.itemPar(key, par::keyType);
  }
  if (const int time = state.time.item) {
    entry.timeUp = items.itemPar(time, par::upperNumber);
    entry.timeDn = items.itemPar(time, par::lowerNumber);
  }
}

}  // namespace

void setStaffAttributes(const ItemTable& items, OrderTable& order) {
  const auto states = stateAtTheRightEnd(items);
  for (int i = 1; i <= items.itemCount(); ++i) {
    const int k = isStaff(items, i) ? order.find(items.itemPar(i, par::instrument)) : 0;
    if (k == 0) {
      continue;
    }
    OrderEntry& entry = order.entry(k);
    if (entry.size == 0) {
      entry.size = items.itemPar(i, par::size) + marker;
      entry.lines = items.itemPar(i, par::lines);
      entry.par11 = items.itemPar(i, par::par11);
    }
    takeState(items, states.at(items.itemPar(i, par::staff)), entry);
  }
}

}  // namespace kiv
