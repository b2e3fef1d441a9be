#include "bench/literal/barlines.h"

namespace kiv::literal {
namespace {

std::size_t braceOf(const BraceTable& braces, float instr) {
  for (std::size_t k = 1; k <= braces.count; ++k) {
    if (braces.instr[k] == instr) {
      return k;
    }
  }
  return 0;
}

void addBrace(Conversion& run, int braceItem, float instr) {
  BraceTable& braces = run.braces;
  if (braceOf(braces, instr) != 0) {
    return;
  }
  const std::int16_t kind = whole(run, braceItem, par::braceKind);
  ++braces.count;
  braces.instr.resize(braces.count);
  braces.kind.resize(braces.count);
  braces.instr[braces.count] = instr;
  braces.kind[braces.count] = kind;
}

}  // namespace

void collectBraces(Conversion& run) {
  const ItemTable& items = run.items;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (!isOfType(items, i, type::barline) || !(items.itemPar(i, par::kind) >= lowestBraceKind)) {
      continue;
    }
    for (int j = 1; j <= items.itemCount(); ++j) {
      if (isOfType(items, j, type::staff) && items.itemPar(j, par::staff) == items.itemPar(i, par::staff) &&
          items.itemPar(j, par::instrument) != 0) {
        addBrace(run, i, items.itemPar(j, par::instrument));
      }
    }
  }
}

void outputBraces(Conversion& run) {
  ItemTable& items = run.items;
  const int before = items.itemCount();
  for (int i = 1; i <= before; ++i) {
    if (!isOfType(items, i, type::staff)) {
      continue;
    }
    const std::size_t brace = braceOf(run.braces, items.itemPar(i, par::instrument));
    if (brace != 0) {
      Item item = newItem(type::barline, items.itemPar(i, par::staff), 0);
      item.par[par::braceKind] = run.braces.kind[brace];
      item.par[par::kind] = lowestBraceKind;
      items.store_item(run.host, item);
    }
  }
}

}  // namespace kiv::literal
