#include "conversion/insert_staff.h"

#include "base/number.h"
#include "conversion/set_rest_durations.h"
#include "conversion/set_time_signature.h"

namespace kiv {
namespace {

constexpr float beingFilled = 1;
constexpr float clefIndent = 2;
constexpr float keyIndent = 7;
constexpr float clefMarker = 1000;

/// Where a new staff goes.
struct StaffPlace {
  float staff = 0;
  float position = 0;
  float par6 = 0;
};

/// Spans of 0 on staff 1 become 1. Returns the widest span; one that 16 bits do not hold ends the program.
std::int16_t widestSpan(const SystemPage& page) {
  std::int16_t widest = 0;
  for (int i = 1; i <= page.items.itemCount(); ++i) {
    if (page.items.itemPar(i, par::type) != type::barline || page.items.itemPar(i, par::staff) != 1) {
      continue;
    }
    float& span = page.items.itemPar(i, par::spannedStaves);
    if (span == 0) {
      span = 1;
    }
    if (span > static_cast<float>(widest)) {
      widest = page.whole(i, par::spannedStaves);
    }
  }
  return widest;
}

float highestStaff(const ItemTable& items) {
  float top = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isStaff(items, i) && items.itemPar(i, par::staff) > top) {
      top = items.itemPar(i, par::staff);
    }
  }
  return top;
}

/// The staff number that the new staff takes: that of the neighbour's staff, or its identifier where it has none. Once
/// it is a staff number, later staves are still compared with it by their identifiers.
float numberOfNeighbour(const ItemTable& items, std::int16_t neighbour) {
  float w = neighbour;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isStaff(items, i) && items.itemPar(i, par::instrument) == w) {
      w = items.itemPar(i, par::staff);
    }
  }
  return w;
}

/// Moves the staves from w to top up by one. Returns the place that comes free, with position and P6 of the last staff
/// item.
StaffPlace makeRoom(ItemTable& items, float w, float top) {
  StaffPlace place{w};
  for (int i = 1; i <= items.itemCount(); ++i) {
    float& staff = items.itemPar(i, par::staff);
    if (staff >= w && staff <= top) {
      staff += 1;
    }
    if (isStaff(items, i)) {
      place.position = items.itemPar(i, par::position);
      place.par6 = items.itemPar(i, par::par6);
    }
  }
  return place;
}

StaffPlace placeAtNeighbour(const SystemPage& page, std::int16_t neighbour) {
  const float w = numberOfNeighbour(page.items, neighbour);
  const float top = highestStaff(page.items);
  if (w == 0 || top == 0 || top < w) {
    page.host.fatal("Logical error in insertStaff: " + generalNumber(w) + "/" + generalNumber(top));
  }
  return makeRoom(page.items, w, top);
}

StaffPlace placeOnTop(const SystemPage& page) {
  const float top = highestStaff(page.items);
  if (top == 0) {
    page.host.fatal("Logical error in insertStaff: " + generalNumber(top));
  }
  return {top + 1};
}

StaffPlace findPlace(const SystemPage& page, std::int16_t instr, const OrderTable& order) {
  const int k = order.find(instr);
  if (k == 0) {
    page.host.runTimeError(RunTimeError::subscriptOutOfRange, page.musFileName);
  }
  return k == 1 ? placeOnTop(page) : placeAtNeighbour(page, order.entry(k - 1).instr);
}

void appendStaff(const SystemPage& page, const StaffPlace& place, std::int16_t instr, const OrderTable& order) {
  Item staff = newItem(type::staff, place.staff, place.position);
  staff.par[par::size] = setDetailPar5(order, instr);
  staff.par[par::par6] = place.par6;
  staff.par[par::lines] = setDetailPar7(order, instr);
  staff.par[par::instrument] = instr;
  staff.par[par::par11] = setDetailPar11(order, instr);
  staff.par[par::mark] = beingFilled;
  page.append(staff);
}

void appendClef(const SystemPage& page, std::int16_t instr, const FirstClefTable& firstClefs) {
  Item clef = newItem(type::clef, page.lastPar(par::staff), page.lastPar(par::position) + clefIndent);
  const float kind = setDetailClef(firstClefs, instr);
  if (kind != 0) {
    clef.par[par::height] = setDetailClefHite(firstClefs, instr);
    clef.par[par::kind] = kind - clefMarker;
  }
  page.append(clef);
}

void appendKeySignature(const SystemPage& page, std::int16_t instr, const OrderTable& order) {
  if (setDetailKey(order, instr) == 0) {
    return;
  }
  Item key = newItem(type::keySignature, page.lastPar(par::staff), page.lastPar(par::position) + keyIndent);
  key.par[par::key] = setDetailKey(order, instr);
  key.par[par::keyType] = setDetailKeyType(order, instr);
  page.append(key);
}

}  // namespace

void insertStaff(const SystemPage& page, std::int16_t instr, const OrderTable& order, const FirstClefTable& firstClefs,
                 const BarlineList& barlines) {
  static_cast<void>(widestSpan(page));  // asked for by nobody, but one that is too wide is an error
  appendStaff(page, findPlace(page, instr, order), instr, order);
  appendClef(page, instr, firstClefs);
  appendKeySignature(page, instr, order);
  for (std::size_t b = 1; b < barlines.size(); ++b) {
    page.append(staffBarline(order, instr, page.lastPar(par::staff), barlines[b]));
  }
  setTimeSignature(page, instr);
  setRestDurations(page, instr, order, barlines);
}

}  // namespace kiv
