#include "conversion/set_rest_durations.h"

#include <string>

#include "conversion/nearest_item.h"
#include "conversion/reference_staff.h"
#include "messages/conversion_messages.h"

namespace kiv {
namespace {

constexpr float wholeBarRest = -2;
constexpr float noTuplet = -1;

struct TimeSignature {
  float upper = 0;
  float lower = 0;
};

/// What says where the rests of a rest staff are, and how long.
struct Models {
  NearestItem beats;  ///< of the real staff whose bars it copies
  NearestItem times;  ///< its own time signatures
};

Models modelsOf(const ItemTable& items, const StaffPair& staves) {
  Models models;
  for (int i = 1; i <= items.itemCount(); ++i) {
    const Item& item = items.item(i);
    if (item[par::staff] == staves.reference && (item.type() == ItemType::note || item.type() == ItemType::rest)) {
      models.beats.add(items, i);
    }
  }
  for (const int i : items.signRows()) {
    if (items.itemPar(i, par::staff) == staves.rest && items.type(i) == ItemType::timeSignature) {
      models.times.add(items, i);
    }
  }
  models.beats.sort();
  models.times.sort();
  return models;
}

/// The first time signature in the order table, for a staff that has none of its own.
TimeSignature anyTimeSignature(const OrderTable& order) {
  for (int k = 1; k <= order.count(); ++k) {
    if (order.entry(k).timeUp != 0) {
      return {order.entry(k).timeUp, order.entry(k).timeDn};
    }
  }
  endProgram(messages::noTimeSignature());
}

/// The signature with numbers instead of the codes for common time and alla breve.
TimeSignature inNumbers(TimeSignature time) {
  constexpr float commonTime = 99;
  constexpr float allaBreve = 98;
  if (time.upper == commonTime) {
    return {4, 4};
  }
  return time.upper == allaBreve ? TimeSignature{2, 2} : time;
}

/// The length of a bar in quarter notes.
float barLength(TimeSignature signature) {
  const TimeSignature time = inNumbers(signature);
  if (time.upper == 0 || time.lower == 0) {
    endProgram(messages::oddTimeSignature(time.upper, time.lower));
  }
  return time.upper / time.lower * 4;
}

Item barRest(float staff, float position, float length) {
  Item rest(ItemType::rest, staff, position);
  rest[par::kind] = wholeBarRest;
  rest[par::duration] = length;
  rest[par::tuplet] = noTuplet;
  return rest;
}

}  // namespace

void setRestDurations(ItemTable& items, std::int16_t instrument, const OrderTable& order, const BarlineList& barlines) {
  const StaffPair staves = findStaffPair(items, instrument, "setRestDurations");
  // An added rest has the position of a beat that precedes it in item order, so it is never the first one there.
  const Models models = modelsOf(items, staves);
  for (std::size_t b = 0; b + 1 < barlines.size(); ++b) {
    const int beat = models.beats.rightOf(barlines[b].position);
    if (beat == 0) {
      endProgram(messages::noBeatInBar());
    }
    const float position = items.itemPar(beat, par::position);
    const int time = models.times.leftOf(position);
    const TimeSignature signature =
        time == 0 ? anyTimeSignature(order)
                  : TimeSignature{items.itemPar(time, par::upperNumber), items.itemPar(time, par::lowerNumber)};
    items.store_item(barRest(staves.rest, position, barLength(signature)));
  }
  items.itemPar(staves.restStaffItem, par::mark) = mark::none;
}

}  // namespace kiv
