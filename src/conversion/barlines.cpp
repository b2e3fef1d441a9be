#include "conversion/barlines.h"

#include "mus/sort_item_table.h"

namespace kiv {
namespace {

constexpr float modelNumber = 1;  // the staff whose barlines are the model
constexpr float onePointCode = 1;
constexpr float onePointSize = 5;

/// Marks all barlines and braces as deleted. Returns the rows of the staff items.
std::vector<int> discardBarlines(ItemTable& items) {
  std::vector<int> staves;
  for (int i = 1; i <= items.itemCount(); ++i) {
    float& type = items.itemPar(i, par::type);
    if (type == type::barline) {
      type = type::deleted;
    } else if (type == type::staff) {
      staves.push_back(i);
    }
  }
  return staves;
}

}  // namespace

BarlineList collectBarlines(const SystemPage& page) {
  BarlineList barlines;
  for (int i = 1; i <= page.items.itemCount(); ++i) {
    if (page.items.itemPar(i, par::type) == type::barline && page.items.itemPar(i, par::staff) == modelNumber &&
        page.items.itemPar(i, par::kind) < lowestBraceKind) {
      barlines.push_back({page.items.itemPar(i, par::position), page.whole(i, par::kind)});
    }
  }
  return barlines;
}

void sortBarlines(Host& host, BarlineList& barlines) {
  std::vector<SortKey> keys;
  keys.reserve(barlines.size());
  for (const ModelBarline& barline : barlines) {
    keys.push_back({0, barline.position, 0});
  }
  BarlineList sorted;
  sorted.reserve(barlines.size());
  for (const std::int16_t row : sortedRows(host, keys)) {
    sorted.push_back(barlines[static_cast<std::size_t>(row - 1)]);
  }
  barlines = std::move(sorted);
}

Item staffBarline(const OrderTable& order, std::int16_t instr, float staff, const ModelBarline& model) {
  Item barline = newItem(type::barline, staff, model.position);
  barline.par[par::spannedStaves] = 1;
  barline.par[par::kind] = model.kind;
  barline.par[par::spanCode] = setDetailBarline(order, instr);
  if (barline.par[par::spanCode] == onePointCode) {
    barline.par[par::spanSize] = onePointSize;
  }
  return barline;
}

void normalizeBarlines(const SystemPage& page, const OrderTable& order, const BarlineList& barlines) {
  const std::vector<int> staves = discardBarlines(page.items);
  for (const int i : staves) {
    for (std::size_t b = 1; b < barlines.size(); ++b) {
      const std::int16_t instr = page.whole(i, par::instrument);
      page.append(staffBarline(order, instr, page.items.itemPar(i, par::staff), barlines[b]));
    }
  }
  if (barlines.empty()) {
    page.host.runTimeError(RunTimeError::subscriptOutOfRange, page.musFileName);
  }
  Item systemBarline = newItem(type::barline, modelNumber, barlines.front().position);
  systemBarline.par[par::spannedStaves] = static_cast<float>(staves.size());
  systemBarline.par[par::kind] = barlines.front().kind;
  page.append(systemBarline);
}

}  // namespace kiv
