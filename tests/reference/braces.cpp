#include "tests/reference/barlines.h"

namespace kiv::reference {
namespace {

std::size_t braceOf(const BraceTable& braces, float instr) {
  for (std::size_t k = 1; k <= braces.count; ++k) {
    if (braces.instr[k] == instr) {
      return k;
    }
  }
  return 0;
}

void addBrace(const ItemTable& items, int braceItem, float instr, BraceTable& braces) {
  if (braceOf(braces, instr) != 0) {
    return;
  }
  const std::int16_t kind = whole(items, braceItem, par::braceKind);
  ++braces.count;
  braces.instr.growTo(braces.count);
  braces.kind.growTo(braces.count);
  braces.instr[braces.count] = instr;
  braces.kind[braces.count] = kind;
}

}  // namespace

void collectBraces(const ItemTable& items, BraceTable& braces) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.type(i) != ItemType::barline || !(items.itemPar(i, par::kind) >= lowestBraceKind)) {
      continue;
    }
    for (int j = 1; j <= items.itemCount(); ++j) {
      if (isStaff(items, j) && items.itemPar(j, par::staff) == items.itemPar(i, par::staff) &&
          items.itemPar(j, par::instrument) != 0) {
        addBrace(items, i, items.itemPar(j, par::instrument), braces);
      }
    }
  }
}

void outputBraces(ItemTable& items, const BraceTable& braces) {
  const int before = items.itemCount();
  for (int i = 1; i <= before; ++i) {
    if (!isStaff(items, i)) {
      continue;
    }
    const std::size_t brace = braceOf(braces, items.itemPar(i, par::instrument));
    if (brace != 0) {
      Item item(ItemType::barline, items.itemPar(i, par::staff), 0);
      item[par::braceKind] = braces.kind[brace];
      item[par::kind] = lowestBraceKind;
      items.store_item(item);
    }
  }
}

}  // namespace kiv::reference
