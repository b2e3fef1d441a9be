#include "bench/literal/rest_durations.h"

#include "base/number.h"

namespace kiv::literal {
namespace {

constexpr float outOfReach = 999;

struct TimeSignature {
  float upper = 0;
  float lower = 0;
};

int restStaffOf(const ItemTable& items, std::int16_t instrument) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isOfType(items, i, type::staff) && items.itemPar(i, par::instrument) == static_cast<float>(instrument)) {
      return i;
    }
  }
  return 0;
}

int referenceStaff(const ItemTable& items) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isOfType(items, i, type::staff) && items.itemPar(i, par::mark) == 0) {
      return i;
    }
  }
  return 0;
}

/// The nearest beat of the staff right of x; 0 when there is none within reach.
int beatAfter(const ItemTable& items, float staff, float x) {
  float best = outOfReach;
  int beat = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    const bool isBeat = isOfType(items, i, type::note) || isOfType(items, i, type::rest);
    const float position = items.itemPar(i, par::position);
    if (isBeat && items.itemPar(i, par::staff) == staff && position > x && position - x < best) {
      best = position - x;
      beat = i;
    }
  }
  return beat;
}

/// The nearest time signature of the staff left of x; 0 when there is none within reach.
int timeBefore(const ItemTable& items, float staff, float x) {
  float best = outOfReach;
  int time = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    const float position = items.itemPar(i, par::position);
    if (isOfType(items, i, type::timeSignature) && items.itemPar(i, par::staff) == staff && position < x &&
        x - position < best) {
      best = x - position;
      time = i;
    }
  }
  return time;
}

TimeSignature timeOfAnyInstrument(Conversion& run) {
  for (std::size_t k = 1; k <= run.order.count; ++k) {
    if (run.order.timeUp[k] != 0) {
      return {run.order.timeUp[k], run.order.timeDn[k]};
    }
  }
  run.host.fatal("Logical error 4 in setRestDurations");
}

TimeSignature timeInForce(Conversion& run, float staff, float beat) {
  const int found = timeBefore(run.items, staff, beat);
  TimeSignature time;
  if (found != 0) {
    time = {run.items.itemPar(found, par::upperNumber), run.items.itemPar(found, par::lowerNumber)};
  } else {
    time = timeOfAnyInstrument(run);
  }
  if (time.upper == 99) {
    time = {4, 4};
  } else if (time.upper == 98) {
    time = {2, 2};
  }
  if (time.upper == 0 || time.lower == 0) {
    run.host.fatal("Time signature with up/dn=" + generalNumber(time.upper) + "/" + generalNumber(time.lower) +
                   " cannot be handled by this program. Contact development.");
  }
  return time;
}

void appendRest(Conversion& run, float staff, float referenceStaffNumber, float x) {
  constexpr float quarters = 4;
  const int beat = beatAfter(run.items, referenceStaffNumber, x);
  if (beat == 0) {
    run.host.fatal("Logical error 3 in setRestDurations");
  }
  const float position = run.items.itemPar(beat, par::position);
  const TimeSignature time = timeInForce(run, staff, position);
  Item item = newItem(type::rest, staff, position);
  item.par[par::kind] = -2;
  item.par[par::duration] = time.upper / time.lower * quarters;
  item.par[par::tuplet] = -1;
  run.items.store_item(run.host, item);
}

}  // namespace

void setTimeSignature(Conversion& run, std::int16_t instrument) {
  ItemTable& items = run.items;
  const int rest = restStaffOf(items, instrument);
  if (rest == 0) {
    run.host.fatal("Logical error 1 in setTimeSignature");
  }
  const int reference = referenceStaff(items);
  if (reference == 0) {
    run.host.fatal("Logical error 2 in setTimeSignature");
  }
  const int before = items.itemCount();
  for (int i = 1; i <= before; ++i) {
    if (isOfType(items, i, type::timeSignature) &&
        items.itemPar(i, par::staff) == items.itemPar(reference, par::staff)) {
      Item item = newItem(type::timeSignature, items.itemPar(rest, par::staff), items.itemPar(i, par::position));
      item.par[par::height] = items.itemPar(i, par::height);
      item.par[par::upperNumber] = items.itemPar(i, par::upperNumber);
      item.par[par::lowerNumber] = items.itemPar(i, par::lowerNumber);
      items.store_item(run.host, item);
    }
  }
}

void setRestDurations(Conversion& run, std::int16_t instrument) {
  ItemTable& items = run.items;
  const int rest = restStaffOf(items, instrument);
  if (rest == 0) {
    run.host.fatal("Logical error 1 in setRestDurations");
  }
  const int reference = referenceStaff(items);
  if (reference == 0) {
    run.host.fatal("Logical error 2 in setRestDurations");
  }
  for (std::size_t b = 1; b + 1 <= run.barlines.count; ++b) {
    appendRest(run, items.itemPar(rest, par::staff), items.itemPar(reference, par::staff), run.barlines.position[b]);
  }
  items.itemPar(rest, par::mark) = 0;
}

}  // namespace kiv::literal
