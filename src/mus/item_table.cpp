#include "mus/item_table.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "base/number.h"
#include "messages/page_messages.h"
#include "messages/run_time_errors.h"

namespace kiv {
namespace {

constexpr std::size_t initialItems = 512;

}  // namespace

ItemTable::ItemTable() : items_(initialItems), sources_(initialItems), indices_(itemLimit + 2) {
  std::iota(indices_.begin(), indices_.end(), std::int16_t{0});
}

void ItemTable::clear() {
  itemCount_ = 0;
  fileCount_ = 0;
  forgetSigns();
}

void ItemTable::forgetSigns() {
  signRows_.clear();
  listedRows_ = 0;
}

const std::vector<std::int16_t>& ItemTable::signRows() const {
  for (std::int16_t i = listedRows_; i < itemCount_;) {
    const ItemType itsType = type(++i);
    if (itsType != ItemType::note && itsType != ItemType::rest) {
      signRows_.push_back(i);
    }
  }
  listedRows_ = itemCount_;
  return signRows_;
}

void ItemTable::beginFile(const std::string& name) {
  if (fileCount_ > 0 && file() == name) {
    return;
  }
  if (static_cast<std::size_t>(fileCount_) == files_.size()) {
    files_.push_back(name);
  } else {
    files_[static_cast<std::size_t>(fileCount_)] = name;
  }
  ++fileCount_;
}

const std::string& ItemTable::file() const {
  static const std::string none;
  return fileCount_ == 0 ? none : files_[static_cast<std::size_t>(fileCount_ - 1)];
}

Location ItemTable::location(int i) const {
  const Origin source = sources_[index(i)];
  Location location;
  location.file = source.file == 0 ? std::string() : files_[static_cast<std::size_t>(source.file - 1)];
  location.item = source.item;
  return location;
}

void ItemTable::sortByOrigin(std::vector<int>& rows) const {
  const auto origin = [this](int row) {
    const Origin& source = sources_[index(row)];
    return std::pair(source.file, source.item);
  };
  std::ranges::stable_sort(rows, {}, origin);
}

void ItemTable::grow() {
  if (itemCount_ == itemLimit) {
    endProgram(messages::tooManyItems(file()));
  }
  // By a quarter: each new row is written, so one that is never used takes memory, too.
  items_.resize(std::min(items_.size() + items_.size() / 4, indices_.size()));
  sources_.resize(items_.size());
}

void ItemTable::reorder(const std::vector<std::int16_t>& order) {
  std::vector<std::int16_t> indices(order.size());
  std::ranges::transform(order, indices.begin(),
                         [this](std::int16_t row) { return indices_[static_cast<std::size_t>(row)]; });
  std::ranges::copy(indices, indices_.begin() + 1);
  reorderSigns(order);
}

/// If all signs are listed, their new rows are, without a look at the items.
void ItemTable::reorderSigns(const std::vector<std::int16_t>& order) {
  if (listedRows_ < itemCount_) {
    forgetSigns();
    return;
  }
  std::vector<char> isSign(order.size() + 1);
  for (const std::int16_t row : signRows_) {
    isSign[static_cast<std::size_t>(row)] = 1;
  }
  signRows_.clear();
  std::int16_t newRow = 0;
  for (const std::int16_t row : order) {
    ++newRow;
    if (isSign[static_cast<std::size_t>(row)] != 0) {
      signRows_.push_back(newRow);
    }
  }
}

std::vector<int> staffRows(const ItemTable& table) {
  constexpr std::size_t typicalCount = 32;
  std::vector<int> rows;
  rows.reserve(typicalCount);
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (isStaff(table, i)) {
      rows.push_back(i);
    }
  }
  return rows;
}

std::int16_t wholePar(const ItemTable& table, int i, int p) {
  const auto whole = toInt16(table.itemPar(i, p));
  if (!whole) {
    endProgram(messages::overflow(table.location(i)));
  }
  return *whole;
}

}  // namespace kiv
