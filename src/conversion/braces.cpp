#include "conversion/braces.h"

#include <vector>

namespace kiv {
namespace {

constexpr float leftEdge = 0;

bool isBrace(const ItemTable& items, int i) {
  return items.itemPar(i, par::type) == type::barline && items.itemPar(i, par::kind) >= lowestBraceKind;
}

/// The rows of the staff items by staff number.
std::unordered_map<float, std::vector<int>> stavesByNumber(const ItemTable& items) {
  std::unordered_map<float, std::vector<int>> staves;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isStaff(items, i)) {
      staves[items.itemPar(i, par::staff)].push_back(i);
    }
  }
  return staves;
}

}  // namespace

void collectBraces(const SystemPage& page, BraceTable& braces) {
  const auto staves = stavesByNumber(page.items);
  for (int i = 1; i <= page.items.itemCount(); ++i) {
    const auto braced = isBrace(page.items, i) ? staves.find(page.items.itemPar(i, par::staff)) : staves.end();
    if (braced == staves.end()) {
      continue;
    }
    for (const int j : braced->second) {
      const float instrument = page.items.itemPar(j, par::instrument);
      if (instrument != 0 && !braces.kinds.contains(instrument)) {
        braces.kinds.emplace(instrument, page.whole(i, par::braceKind));
      }
    }
  }
}

void outputBraces(const SystemPage& page, const BraceTable& braces) {
  const int before = page.items.itemCount();
  for (int i = 1; i <= before; ++i) {
    const auto kind =
        isStaff(page.items, i) ? braces.kinds.find(page.items.itemPar(i, par::instrument)) : braces.kinds.end();
    if (kind == braces.kinds.end()) {
      continue;
    }
    Item brace = newItem(type::barline, page.items.itemPar(i, par::staff), leftEdge);
    brace.par[par::braceKind] = kind->second;
    brace.par[par::kind] = lowestBraceKind;
    page.append(brace);
  }
}

}  // namespace kiv
