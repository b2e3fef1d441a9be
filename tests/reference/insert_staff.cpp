#include "tests/reference/insert_staff.h"

#include "messages/conversion_messages.h"
#include "tests/reference/order_table.h"
#include "tests/reference/rest_durations.h"

namespace kiv::reference {
namespace {

/// Nobody uses the result, but barlines that span nothing are corrected here, and a span that is too wide is an error.
std::int16_t spanOfSystemBarline(ItemTable& items) {
  std::int16_t span = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.type(i) == ItemType::barline && items.itemPar(i, par::staff) == 1) {
      if (items.itemPar(i, par::spannedStaves) == 0) {
        items.itemPar(i, par::spannedStaves) = 1;
      }
      if (items.itemPar(i, par::spannedStaves) > static_cast<float>(span)) {
        span = whole(items, i, par::spannedStaves);
      }
    }
  }
  return span;
}

void appendStaff(Conversion& run, std::int16_t instr, float staff, float position, float par6) {
  Item item(ItemType::staff, staff, position);
  item[par::size] = setDetailPar5(run.order, instr);
  item[par::par6] = par6;
  item[par::lines] = setDetailPar7(run.order, instr);
  item[par::instrument] = instr;
  item[par::par11] = setDetailPar11(run.order, instr);
  item[par::mark] = mark::beingFilled;
  run.items.store_item(item);
}

void insertBelow(Conversion& run, std::int16_t instr, std::int16_t preceding) {
  ItemTable& items = run.items;
  float w = preceding;
  float top = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isStaff(items, i)) {
      // One value is the identifier to find and then the staff found, so later staves are compared with that.
      if (items.itemPar(i, par::instrument) == w) {
        w = items.itemPar(i, par::staff);
      }
      top = std::max(top, items.itemPar(i, par::staff));
    }
  }
  if (w == 0 || top == 0 || top < w) {
    endProgram(messages::noPlaceForStaff(w, top));
  }
  float position = 0;
  float par6 = 0;
  for (int s = static_cast<int>(top); s >= static_cast<int>(w); --s) {
    for (int i = 1; i <= items.itemCount(); ++i) {
      if (isStaff(items, i)) {
        position = items.itemPar(i, par::position);
        par6 = items.itemPar(i, par::par6);
      }
      if (items.itemPar(i, par::staff) == static_cast<float>(s)) {
        items.itemPar(i, par::staff) += 1;
      }
    }
  }
  appendStaff(run, instr, w, position, par6);
}

void insertOnTop(Conversion& run, std::int16_t instr) {
  float top = 0;
  for (int i = 1; i <= run.items.itemCount(); ++i) {
    if (isStaff(run.items, i)) {
      top = std::max(top, run.items.itemPar(i, par::staff));
    }
  }
  if (top == 0) {
    endProgram(messages::noPlaceOnTop(top));
  }
  appendStaff(run, instr, top + 1, 0, 0);
}

/// An item on the staff of the last item, at a distance to the right of it.
Item afterLast(const ItemTable& items, ItemType type, float distance) {
  const int last = items.itemCount();
  return {type, items.itemPar(last, par::staff), items.itemPar(last, par::position) + distance};
}

void appendClef(Conversion& run, std::int16_t instr) {
  constexpr float distance = 2;
  constexpr float marker = 1000;
  Item item = afterLast(run.items, ItemType::clef, distance);
  const float clef = setDetailClef(run.firstClefs, instr);
  if (clef != 0) {
    item[par::height] = setDetailClefHite(run.firstClefs, instr);
    item[par::kind] = clef - marker;
  }
  run.items.store_item(item);
}

void appendKey(Conversion& run, std::int16_t instr) {
  constexpr float distance = 7;
  if (setDetailKey(run.order, instr) == 0) {
    return;
  }
  Item item = afterLast(run.items, ItemType::keySignature, distance);
  item[par::key] = setDetailKey(run.order, instr);
  item[par::keyType] = setDetailKeyType(run.order, instr);
  run.items.store_item(item);
}

void appendBarlines(Conversion& run, std::int16_t instr) {
  for (std::size_t b = 2; b <= run.barlines.count; ++b) {
    appendStaffBarline(run, instr, run.items.itemPar(run.items.itemCount(), par::staff), run.barlines.position[b],
                       run.barlines.kind[b]);
  }
}

}  // namespace

void insertStaff(Conversion& run, std::int16_t instr) {
  static_cast<void>(spanOfSystemBarline(run.items));
  const std::size_t pos = rowOf(run.order, instr);
  if (pos == 1) {
    insertOnTop(run, instr);
  } else {
    insertBelow(run, instr, run.order.instr[pos - 1]);
  }
  appendClef(run, instr);
  appendKey(run, instr);
  appendBarlines(run, instr);
  setTimeSignature(run.items, instr);
  setRestDurations(run, instr);
}

}  // namespace kiv::reference
