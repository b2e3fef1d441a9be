#include "tests/reference/rest_durations.h"

#include <string_view>

#include "messages/conversion_messages.h"

namespace kiv::reference {
namespace {

constexpr float outOfReach = 999;

struct TimeSignature {
  float upper = 0;
  float lower = 0;
};

int restStaffOf(const ItemTable& items, std::int16_t instrument, std::string_view procedure) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isStaff(items, i) && items.itemPar(i, par::instrument) == static_cast<float>(instrument)) {
      return i;
    }
  }
  endProgram(messages::noRestStaff(procedure));
}

int referenceStaff(const ItemTable& items, std::string_view procedure) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isStaff(items, i) && items.itemPar(i, par::mark) == 0) {
      return i;
    }
  }
  endProgram(messages::noReferenceStaff(procedure));
}

/// The nearest beat of the staff right of x; 0 when there is none within reach.
int beatRightOf(const ItemTable& items, float staff, float x) {
  float best = outOfReach;
  int beat = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    const bool isBeat = items.type(i) == ItemType::note || items.type(i) == ItemType::rest;
    const float position = items.itemPar(i, par::position);
    if (isBeat && items.itemPar(i, par::staff) == staff && position > x && position - x < best) {
      best = position - x;
      beat = i;
    }
  }
  return beat;
}

/// The nearest time signature of the staff left of x; 0 when there is none within reach.
int timeLeftOf(const ItemTable& items, float staff, float x) {
  float best = outOfReach;
  int time = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    const float position = items.itemPar(i, par::position);
    if (items.type(i) == ItemType::timeSignature && items.itemPar(i, par::staff) == staff && position < x &&
        x - position < best) {
      best = x - position;
      time = i;
    }
  }
  return time;
}

TimeSignature timeOfAnyInstrument(const OrderTable& order) {
  for (std::size_t k = 1; k <= order.count; ++k) {
    if (order.timeUp[k] != 0) {
      return {order.timeUp[k], order.timeDn[k]};
    }
  }
  endProgram(messages::noTimeSignature());
}

TimeSignature timeInForce(const Conversion& run, float staff, float beat) {
  const int found = timeLeftOf(run.items, staff, beat);
  TimeSignature time;
  if (found != 0) {
    time = {run.items.itemPar(found, par::upperNumber), run.items.itemPar(found, par::lowerNumber)};
  } else {
    time = timeOfAnyInstrument(run.order);
  }
  if (time.upper == 99) {
    time = {4, 4};
  } else if (time.upper == 98) {
    time = {2, 2};
  }
  if (time.upper == 0 || time.lower == 0) {
    endProgram(messages::oddTimeSignature(time.upper, time.lower));
  }
  return time;
}

void appendRest(Conversion& run, float staff, float referenceStaffNumber, float x) {
  constexpr float quarters = 4;
  const int beat = beatRightOf(run.items, referenceStaffNumber, x);
  if (beat == 0) {
    endProgram(messages::noBeatInBar());
  }
  const float position = run.items.itemPar(beat, par::position);
  const TimeSignature time = timeInForce(run, staff, position);
  Item item(ItemType::rest, staff, position);
  item[par::kind] = -2;
  item[par::duration] = time.upper / time.lower * quarters;
  item[par::tuplet] = -1;
  run.items.store_item(item);
}

}  // namespace

void setTimeSignature(ItemTable& items, std::int16_t instrument) {
  const int rest = restStaffOf(items, instrument, "setTimeSignature");
  const int reference = referenceStaff(items, "setTimeSignature");
  const int before = items.itemCount();
  for (int i = 1; i <= before; ++i) {
    if (items.type(i) == ItemType::timeSignature &&
        items.itemPar(i, par::staff) == items.itemPar(reference, par::staff)) {
      Item item(ItemType::timeSignature, items.itemPar(rest, par::staff), items.itemPar(i, par::position));
      item[par::height] = items.itemPar(i, par::height);
      item[par::upperNumber] = items.itemPar(i, par::upperNumber);
      item[par::lowerNumber] = items.itemPar(i, par::lowerNumber);
      items.store_item(item);
    }
  }
}

void setRestDurations(Conversion& run, std::int16_t instrument) {
  ItemTable& items = run.items;
  const int rest = restStaffOf(items, instrument, "setRestDurations");
  const int reference = referenceStaff(items, "setRestDurations");
  for (std::size_t b = 1; b + 1 <= run.barlines.count; ++b) {
    appendRest(run, items.itemPar(rest, par::staff), items.itemPar(reference, par::staff), run.barlines.position[b]);
  }
  items.itemPar(rest, par::mark) = mark::none;
}

}  // namespace kiv::reference
