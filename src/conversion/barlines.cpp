#include "conversion/barlines.h"

#include "messages/run_time_errors.h"
#include "mus/sort_item_table.h"

namespace kiv {
namespace {

constexpr float modelNumber = 1;  // the staff whose barlines are the model
constexpr float onePointCode = 1;
constexpr float onePointSize = 5;

/// Marks all barlines and braces as deleted. Returns the rows of the staff items.
std::vector<int> discardBarlines(ItemTable& items) {
  std::vector<int> staves;
  for (const int i : items.signRows()) {
    Item& item = items.item(i);
    if (item.type() == ItemType::barline) {
      item.setType(ItemType::deleted);
    } else if (item.type() == ItemType::staff) {
      staves.push_back(i);
    }
  }
  return staves;
}

}  // namespace

BarlineList collectBarlines(const ItemTable& items) {
  BarlineList barlines;
  for (const int i : items.signRows()) {
    if (items.type(i) == ItemType::barline && items.itemPar(i, par::staff) == modelNumber &&
        items.itemPar(i, par::kind) < lowestBraceKind) {
      barlines.push_back({items.itemPar(i, par::position), wholePar(items, i, par::kind)});
    }
  }
  return barlines;
}

void sortBarlines(BarlineList& barlines) {
  std::vector<SortKey> keys;
  keys.reserve(barlines.size());
  for (const ModelBarline& barline : barlines) {
    keys.push_back({0, barline.position, 0});
  }
  BarlineList sorted;
  sorted.reserve(barlines.size());
  for (const std::int16_t row : sortedRows(keys)) {
    sorted.push_back(barlines[static_cast<std::size_t>(row - 1)]);
  }
  barlines = std::move(sorted);
}

Item staffBarline(const OrderTable& order, std::int16_t instr, float staff, const ModelBarline& model) {
  Item barline(ItemType::barline, staff, model.position);
  barline[par::spannedStaves] = 1;
  barline[par::kind] = model.kind;
  barline[par::spanCode] = setDetailBarline(order, instr);
  if (barline[par::spanCode] == onePointCode) {
    barline[par::spanSize] = onePointSize;
  }
  return barline;
}

void normalizeBarlines(ItemTable& items, const OrderTable& order, const BarlineList& barlines) {
  const std::vector<int> staves = discardBarlines(items);
  for (const int i : barlines.size() > 1 ? staves : std::vector<int>()) {
    const std::int16_t instr = wholePar(items, i, par::instrument);
    Item barline = staffBarline(order, instr, items.itemPar(i, par::staff), barlines[1]);
    for (std::size_t b = 1; b < barlines.size(); ++b) {
      barline[par::position] = barlines[b].position;
      barline[par::kind] = barlines[b].kind;
      items.store_item(barline);
    }
  }
  if (barlines.empty()) {
    endProgram(messages::subscriptOutOfRange({.file = items.file()}));
  }
  Item systemBarline(ItemType::barline, modelNumber, barlines.front().position);
  systemBarline[par::spannedStaves] = static_cast<float>(staves.size());
  systemBarline[par::kind] = barlines.front().kind;
  items.store_item(systemBarline);
}

}  // namespace kiv
