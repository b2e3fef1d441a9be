#include "bench/literal/insert_staff.h"

#include <algorithm>

#include "base/number.h"
#include "bench/literal/order_table.h"
#include "bench/literal/rest_durations.h"

namespace kiv::literal {
namespace {

// Nobody asks for the result, but the barlines that span nothing are mended on the way.
std::int16_t spanOfSystemBarline(Conversion& run) {
  ItemTable& items = run.items;
  std::int16_t span = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isOfType(items, i, type::barline) && items.itemPar(i, par::staff) == 1) {
      if (items.itemPar(i, par::spannedStaves) == 0) {
        items.itemPar(i, par::spannedStaves) = 1;
      }
      if (items.itemPar(i, par::spannedStaves) > static_cast<float>(span)) {
        span = whole(run, i, par::spannedStaves);
      }
    }
  }
  return span;
}

void appendStaff(Conversion& run, std::int16_t instr, float staff, float position, float par6) {
  Item item = newItem(type::staff, staff, position);
  item.par[par::size] = setDetailPar5(run, instr);
  item.par[par::par6] = par6;
  item.par[par::lines] = setDetailPar7(run, instr);
  item.par[par::instrument] = instr;
  item.par[par::par11] = setDetailPar11(run, instr);
  item.par[par::mark] = 1;
  run.items.store_item(run.host, item);
}

void insertBelow(Conversion& run, std::int16_t instr, std::int16_t preceding) {
  ItemTable& items = run.items;
  float w = preceding;
  float top = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isOfType(items, i, type::staff)) {
      // One value is the identifier looked for and then the staff found, so later staves are held against that.
      if (items.itemPar(i, par::instrument) == w) {
        w = items.itemPar(i, par::staff);
      }
      top = std::max(top, items.itemPar(i, par::staff));
    }
  }
  if (w == 0 || top == 0 || top < w) {
    run.host.fatal("Logical error in insertStaff: " + generalNumber(w) + "/" + generalNumber(top));
  }
  float position = 0;
  float par6 = 0;
  for (int s = static_cast<int>(top); s >= static_cast<int>(w); --s) {
    for (int i = 1; i <= items.itemCount(); ++i) {
      if (isOfType(items, i, type::staff)) {
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
    if (isOfType(run.items, i, type::staff)) {
      top = std::max(top, run.items.itemPar(i, par::staff));
    }
  }
  if (top == 0) {
    run.host.fatal("Logical error in insertStaff: " + generalNumber(top));
  }
  appendStaff(run, instr, top + 1, 0, 0);
}

/// An item on the staff of the last item, so far to the right of it.
Item behindLast(const ItemTable& items, float type, float distance) {
  const int last = items.itemCount();
  return newItem(type, items.itemPar(last, par::staff), items.itemPar(last, par::position) + distance);
}

void appendClef(Conversion& run, std::int16_t instr) {
  constexpr float distance = 2;
  constexpr float mark = 1000;
  Item item = behindLast(run.items, type::clef, distance);
  const float clef = setDetailClef(run, instr);
  if (clef != 0) {
    item.par[par::height] = setDetailClefHite(run, instr);
    item.par[par::kind] = clef - mark;
  }
  run.items.store_item(run.host, item);
}

void appendKey(Conversion& run, std::int16_t instr) {
  constexpr float distance = 7;
  if (setDetailKey(run, instr) == 0) {
    return;
  }
  Item item = behindLast(run.items, type::keySignature, distance);
  item.par[par::key] = setDetailKey(run, instr);
  item.par[par::keyType] = setDetailKeyType(run, instr);
  run.items.store_item(run.host, item);
}

void appendBarlines(Conversion& run, std::int16_t instr) {
  for (std::size_t b = 2; b <= run.barlines.count; ++b) {
    Item item = newItem(type::barline, run.items.itemPar(run.items.itemCount(), par::staff), run.barlines.position[b]);
    item.par[par::spannedStaves] = 1;
    item.par[par::kind] = run.barlines.kind[b];
    item.par[par::spanCode] = setDetailBarline(run, instr);
    if (item.par[par::spanCode] == 1) {
      item.par[par::spanSize] = 5;
    }
    run.items.store_item(run.host, item);
  }
}

}  // namespace

void insertStaff(Conversion& run, std::int16_t instr) {
  spanOfSystemBarline(run);
  const std::size_t pos = rowOf(run.order, instr);
  if (pos == 1) {
    insertOnTop(run, instr);
  } else {
    insertBelow(run, instr, run.order.instr[pos - 1]);
  }
  appendClef(run, instr);
  appendKey(run, instr);
  appendBarlines(run, instr);
  setTimeSignature(run, instr);
  setRestDurations(run, instr);
}

}  // namespace kiv::literal
