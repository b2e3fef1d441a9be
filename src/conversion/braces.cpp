#include "conversion/braces.h"

#include <vector>

namespace kiv {
namespace {

constexpr float leftEdge = 0;

bool isBrace(const ItemTable& items, int i) {
  return items.type(i) == ItemType::barline && items.itemPar(i, par::kind) >= lowestBraceKind;
}

/// The rows of the staff items by staff number.
std::unordered_map<float, std::vector<int>> stavesByNumber(const ItemTable& items) {
  std::unordered_map<float, std::vector<int>> staves;
  for (const int i : items.signRows()) {
    if (isStaff(items, i)) {
      staves[items.itemPar(i, par::staff)].push_back(i);
    }
  }
  return staves;
}

}  // namespace

void collectBraces(const ItemTable& items, BraceTable& braces) {
  const auto staves = stavesByNumber(items);
  for (const int i : items.signRows()) {
    const auto braced = isBrace(items, i) ? staves.find(items.itemPar(i, par::staff)) : staves.end();
    if (braced == staves.end()) {
      continue;
    }
    for (const int j : braced->second) {
      const float instrument = items.itemPar(j, par::instrument);
      if (instrument != 0 && !braces.kinds.contains(instrument)) {
        braces.kinds.emplace(instrument, wholePar(items, i, par::braceKind));
      }
    }
  }
}

void outputBraces(ItemTable& items, const BraceTable& braces) {
  for (const int i : items.signRows()) {
    const auto kind = isStaff(items, i) ? braces.kinds.find(items.itemPar(i, par::instrument)) : braces.kinds.end();
    if (kind == braces.kinds.end()) {
      continue;
    }
    Item brace(ItemType::barline, items.itemPar(i, par::staff), leftEdge);
    brace[par::braceKind] = kind->second;
    brace[par::kind] = lowestBraceKind;
    items.store_item(brace);
  }
}

}  // namespace kiv
