#include "mus/item_table.h"

#include <algorithm>
#include <numeric>
#include <vector>

#include "base/number.h"

namespace kiv {
namespace {

constexpr std::size_t usualItems = 512;

}  // namespace

ItemTable::ItemTable() : items_(usualItems), places_(itemLimit + 2) {
  std::iota(places_.begin(), places_.end(), std::int16_t{0});
}

void ItemTable::makeRoom(Host& host) {
  if (itemCount_ == itemLimit) {
    host.fatal("MUS file too big for operation. Hit OK to terminate.");
  }
  items_.resize(std::min(2 * items_.size(), places_.size()));
}

void ItemTable::reorder(const std::vector<std::int16_t>& order) {
  struct NewRow {
    std::int16_t place;
    float par0;  // is no part of what is put in order
  };
  std::vector<NewRow> rows;
  rows.reserve(order.size());
  for (const std::int16_t source : order) {
    const auto i = static_cast<int>(rows.size()) + 1;
    rows.push_back({static_cast<std::int16_t>(place(source)), itemPar(i, 0)});
  }
  std::size_t i = 0;
  for (const NewRow& fresh : rows) {
    places_[++i] = fresh.place;
    items_[static_cast<std::size_t>(fresh.place)].par[0] = fresh.par0;
  }
}

std::vector<int> staffRows(const ItemTable& table) {
  constexpr std::size_t usual = 32;
  std::vector<int> rows;
  rows.reserve(usual);
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (isStaff(table, i)) {
      rows.push_back(i);
    }
  }
  return rows;
}

std::int16_t wholePar(Host& host, const std::string& musFileName, const ItemTable& table, int i, int p) {
  const auto whole = toInt16(table.itemPar(i, p));
  if (!whole) {
    host.runTimeError(RunTimeError::overflow, musFileName + ", item " + std::to_string(i));
  }
  return *whole;
}

}  // namespace kiv
