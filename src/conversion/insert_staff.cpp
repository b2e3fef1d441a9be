#include "conversion/insert_staff.h"

#include <vector>

#include "conversion/set_rest_durations.h"
#include "conversion/set_time_signature.h"
#include "messages/conversion_messages.h"
#include "messages/run_time_errors.h"

namespace kiv {
namespace {

constexpr float clefIndent = 2;
constexpr float keyIndent = 7;

/// The position of a new staff.
struct StaffPlace {
  float staff = 0;
  float position = 0;
  float par6 = 0;
};

/// Parameter p of the item at the end of the table.
float lastPar(const ItemTable& items, int p) {
  return items.itemPar(items.itemCount(), p);
}

/// The rows of the staff items.
using StaffRows = std::vector<int>;

/// A barline on staff 1: a span of 0 becomes 1. Returns the widest span up to now; one that 16 bits do not hold ends
/// the program.
std::int16_t correctSpan(ItemTable& items, int i, std::int16_t widest) {
  float& span = items.itemPar(i, par::spannedStaves);
  if (span == 0) {
    span = 1;
  }
  return span > static_cast<float>(widest) ? wholePar(items, i, par::spannedStaves) : widest;
}

/// Corrects the spans of the barlines on staff 1. Returns the rows of the staves.
StaffRows correctSpans(ItemTable& items) {
  StaffRows staves;
  std::int16_t widest = 0;  // is not used, but a span that is too wide is an error
  for (const int i : items.signRows()) {
    const Item& item = items.item(i);
    if (item.type() == ItemType::staff) {
      staves.push_back(i);
    } else if (item.type() == ItemType::barline && item[par::staff] == 1) {
      widest = correctSpan(items, i, widest);
    }
  }
  return staves;
}

float highestStaff(const ItemTable& items, const StaffRows& staves) {
  float top = 0;
  for (const int i : staves) {
    top = items.itemPar(i, par::staff) > top ? items.itemPar(i, par::staff) : top;
  }
  return top;
}

/// The staff number that the new staff takes: that of the adjacent instrument's staff, or its identifier where it has
/// none. Once it is a staff number, later staves are still compared with it by their identifiers.
float numberOfAdjacentStaff(const ItemTable& items, const StaffRows& staves, std::int16_t adjacent) {
  float w = adjacent;
  for (const int i : staves) {
    if (items.itemPar(i, par::instrument) == w) {
      w = items.itemPar(i, par::staff);
    }
  }
  return w;
}

/// Moves the staves from w to top up by one.
void shiftStavesUp(ItemTable& items, float w, float top) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    float& staff = items.itemPar(i, par::staff);
    if (staff >= w && staff <= top) {
      staff += 1;
    }
  }
}

/// The place that becomes free when staves move up, with position and P6 of the last staff item.
StaffPlace placeNextTo(ItemTable& items, const StaffRows& staves, std::int16_t adjacent) {
  const float w = numberOfAdjacentStaff(items, staves, adjacent);
  const float top = highestStaff(items, staves);
  if (w == 0 || top == 0 || top < w) {
    endProgram(messages::noPlaceForStaff(w, top));
  }
  shiftStavesUp(items, w, top);
  const Item& last = items.item(staves.back());  // there is one, as one is the highest
  return {w, last[par::position], last[par::par6]};
}

StaffPlace placeOnTop(const ItemTable& items, const StaffRows& staves) {
  const float top = highestStaff(items, staves);
  if (top == 0) {
    endProgram(messages::noPlaceOnTop(top));
  }
  return {top + 1};
}

StaffPlace findPlace(ItemTable& items, const StaffRows& staves, std::int16_t instr, const OrderTable& order) {
  const int k = order.find(instr);
  if (k == 0) {
    endProgram(messages::subscriptOutOfRange({.file = items.file()}));
  }
  return k == 1 ? placeOnTop(items, staves) : placeNextTo(items, staves, order.entry(k - 1).instr);
}

void appendStaff(ItemTable& items, const StaffPlace& place, std::int16_t instr, const OrderTable& order) {
  Item staff(ItemType::staff, place.staff, place.position);
  staff[par::size] = setDetailPar5(order, instr);
  staff[par::par6] = place.par6;
  staff[par::lines] = setDetailPar7(order, instr);
  staff[par::instrument] = instr;
  staff[par::par11] = setDetailPar11(order, instr);
  staff[par::mark] = mark::beingFilled;
  items.store_item(staff);
}

void appendClef(ItemTable& items, std::int16_t instr, const FirstClefTable& firstClefs) {
  Item clef(ItemType::clef, lastPar(items, par::staff), lastPar(items, par::position) + clefIndent);
  const MarkedValue kind = setDetailClef(firstClefs, instr);
  if (kind.isKnown()) {
    clef[par::height] = setDetailClefHite(firstClefs, instr);
    clef[par::kind] = kind.value();
  }
  items.store_item(clef);
}

void appendKeySignature(ItemTable& items, std::int16_t instr, const OrderTable& order) {
  if (setDetailKey(order, instr) == 0) {
    return;
  }
  Item key(ItemType::keySignature, lastPar(items, par::staff), lastPar(items, par::position) + keyIndent);
  key[par::key] = setDetailKey(order, instr);
  key[par::keyType] = setDetailKeyType(order, instr);
  items.store_item(key);
}

}  // namespace

void insertStaff(ItemTable& items, std::int16_t instr, const OrderTable& order, const FirstClefTable& firstClefs,
                 const BarlineList& barlines) {
  const StaffRows staves = correctSpans(items);
  appendStaff(items, findPlace(items, staves, instr, order), instr, order);
  appendClef(items, instr, firstClefs);
  appendKeySignature(items, instr, order);
  for (std::size_t b = 1; b < barlines.size(); ++b) {
    items.store_item(staffBarline(order, instr, lastPar(items, par::staff), barlines[b]));
  }
  setTimeSignature(items, instr);
  setRestDurations(items, instr, order, barlines);
}

}  // namespace kiv
