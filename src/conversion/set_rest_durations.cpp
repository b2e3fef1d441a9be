#include "conversion/set_rest_durations.h"

#include <string>

#include "base/number.h"
#include "conversion/nearest_item.h"
#include "conversion/reference_staff.h"

namespace kiv {
namespace {

constexpr float wholeBarRest = -2;
constexpr float noTuplet = -1;

struct TimeSignature {
  float upper = 0;
  float lower = 0;
};

bool isBeat(const ItemTable& items, int i) {
  const float type = items.itemPar(i, par::type);
  return type == type::note || type == type::rest;
}

NearestItem beatsOf(const ItemTable& items, float staff) {
  NearestItem beats;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isBeat(items, i) && items.itemPar(i, par::staff) == staff) {
      beats.add(items, i);
    }
  }
  beats.sort();
  return beats;
}

NearestItem timeSignaturesOf(const ItemTable& items, float staff) {
  NearestItem times;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.itemPar(i, par::type) == type::timeSignature && items.itemPar(i, par::staff) == staff) {
      times.add(items, i);
    }
  }
  times.sort();
  return times;
}

/// The first time signature in the order table, for a staff that has none of its own.
TimeSignature anyTimeSignature(Host& host, const OrderTable& order) {
  for (int k = 1; k <= order.count(); ++k) {
    if (order.entry(k).timeUp != 0) {
      return {order.entry(k).timeUp, order.entry(k).timeDn};
    }
  }
  host.fatal("Logical error 4 in setRestDurations");
}

/// The signature with its codes for common time and alla breve put in numbers.
TimeSignature inNumbers(TimeSignature time) {
  constexpr float commonTime = 99;
  constexpr float allaBreve = 98;
  if (time.upper == commonTime) {
    return {4, 4};
  }
  return time.upper == allaBreve ? TimeSignature{2, 2} : time;
}

/// The length of a bar in quarter notes.
float barLength(Host& host, TimeSignature signature) {
  const TimeSignature time = inNumbers(signature);
  if (time.upper == 0 || time.lower == 0) {
    host.fatal("Time signature with up/dn=" + generalNumber(time.upper) + "/" + generalNumber(time.lower) +
               " cannot be handled by this program. Contact development.");
  }
  return time.upper / time.lower * 4;
}

Item barRest(float staff, float position, float length) {
  Item rest = newItem(type::rest, staff, position);
  rest.par[par::kind] = wholeBarRest;
  rest.par[par::duration] = length;
  rest.par[par::tuplet] = noTuplet;
  return rest;
}

}  // namespace

void setRestDurations(const SystemPage& page, std::int16_t instrument, const OrderTable& order,
                      const BarlineList& barlines) {
  const StaffPair staves = findStaffPair(page, instrument, "setRestDurations");
  // The rests that are added lie under beats that come before them in item order, so they are never the first.
  const NearestItem beats = beatsOf(page.items, staves.reference);
  const NearestItem times = timeSignaturesOf(page.items, staves.rest);
  for (std::size_t b = 0; b + 1 < barlines.size(); ++b) {
    const int beat = beats.rightOf(barlines[b].position);
    if (beat == 0) {
      page.host.fatal("Logical error 3 in setRestDurations");
    }
    const float position = page.items.itemPar(beat, par::position);
    const int time = times.leftOf(position);
    const TimeSignature signature = time == 0 ? anyTimeSignature(page.host, order)
                                              : TimeSignature{page.items.itemPar(time, par::upperNumber),
                                                              page.items.itemPar(time, par::lowerNumber)};
    page.append(barRest(staves.rest, position, barLength(page.host, signature)));
  }
  page.items.itemPar(staves.restStaffItem, par::mark) = 0;
}

}  // namespace kiv
