#include "mus/sort_item_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <numeric>
#include <optional>
#include <utility>

#include "mus/exch.h"

namespace kiv {
namespace {

using Rows = std::vector<std::int16_t>;

bool hasNaN(const SortKey& key) {
  return std::isnan(key.first) || std::isnan(key.position) || std::isnan(key.par4);
}

const SortKey& keyOf(const std::vector<SortKey>& keys, std::int16_t row) {
  return keys[static_cast<std::size_t>(row - 1)];
}

void exchangeInPasses(const std::vector<SortKey>& keys, Rows& order) {
  bool exchanged = true;
  while (exchanged) {
    exchanged = false;
    for (std::size_t i = 1; i < order.size(); ++i) {
      if (outOfOrder(keyOf(keys, order[i - 1]), keyOf(keys, order[i]))) {
        exch(order[i - 1], order[i]);
        exchanged = true;
      }
    }
  }
}

/// First keys that are whole and smaller than this take the fast path.
constexpr std::size_t endOfSmall = 1024;

/// Rows that follow each other, have one small first key, and are in order.
struct Run {
  std::int16_t start = 0;
  std::int16_t end = 0;  // the row after the last one
  std::size_t first = 0;
};

bool isSmallWhole(float key) {
  return key >= 0 && key < endOfSmall && key == static_cast<float>(static_cast<int>(key));
}

/// The rows as runs; nullopt when one of them has no order or no small first key.
std::optional<std::vector<Run>> runsOf(const std::vector<SortKey>& keys) {
  constexpr std::size_t typicalCount = 256;
  std::vector<Run> runs;
  runs.reserve(typicalCount);
  const auto endOfRows = static_cast<std::int16_t>(keys.size() + 1);
  SortKey last{.first = std::numeric_limits<float>::quiet_NaN()};
  std::int16_t row = 0;
  for (const SortKey& key : keys) {
    ++row;
    if (std::isunordered(key.position, key.par4)) {
      return std::nullopt;
    }
    if (key.first != last.first || outOfOrder(last, key)) {
      if (!isSmallWhole(key.first)) {
        return std::nullopt;
      }
      if (!runs.empty()) {
        runs.back().end = row;
      }
      runs.push_back({row, endOfRows, static_cast<std::size_t>(key.first)});
    }
    last = key;
  }
  return runs;
}

/// Collects the rows of each first key, and puts them in order.
class RunSorter {
 public:
  /// The keys must outlive the sorter.
  RunSorter(const std::vector<SortKey>& keys, const std::vector<Run>& runs) : keys_(keys), order_(keys.size()) {
    for (const Run& run : runs) {
      highest_ = std::max(highest_, run.first);
      groups_[run.first].end += run.end - run.start;
    }
    std::int32_t start = 0;
    for (std::size_t key = highest_ + 1; key > 0; --key) {
      Group& group = groups_[key - 1];
      const std::int32_t count = group.end;
      group = {start, start, start};
      start += count;
    }
  }

  /// Later rows come after those of equal keys.
  void add(const Run& run) {
    Group& group = groups_[run.first];
    const auto place = order_.begin() + group.end;
    const bool follows = group.start == group.end || !isBefore(run.start, *std::prev(place));
    const bool isInOrder = follows && group.inOrder == group.end;
    group.end += run.end - run.start;
    group.inOrder = isInOrder ? group.end : group.inOrder;
    std::iota(place, order_.begin() + group.end, run.start);
  }

  /// All rows in order, once.
  Rows order() && {
    for (std::size_t key = 0; key <= highest_; ++key) {
      if (groups_[key].inOrder < groups_[key].end) {
        sort(groups_[key]);
      }
    }
    return std::move(order_);
  }

 private:
  /// Places in the order, those of one first key.
  struct Group {
    std::int32_t start = 0;
    std::int32_t inOrder = 0;  // those before this one are
    std::int32_t end = 0;
  };

  bool isBefore(std::int16_t a, std::int16_t b) const { return outOfOrder(keyOf(keys_, b), keyOf(keys_, a)); }

  /// What a conversion has added to a staff is at its end.
  void sort(const Group& group) {
    constexpr std::ptrdiff_t few = 32;
    const auto before = [this](std::int16_t a, std::int16_t b) { return isBefore(a, b); };
    const auto start = order_.begin() + group.start;
    const auto rest = order_.begin() + group.inOrder;
    const auto end = order_.begin() + group.end;
    if (end - rest > few) {
      std::stable_sort(rest, end, before);
      std::inplace_merge(start, rest, end, before);
      return;
    }
    for (auto next = rest; next != end; ++next) {
      const std::int16_t row = *next;
      const auto place = std::upper_bound(start, next, row, before);
      std::copy_backward(place, next, std::next(next));
      *place = row;
    }
  }

  const std::vector<SortKey>& keys_;
  std::array<Group, endOfSmall> groups_{};  // by first key
  std::size_t highest_ = 0;
  Rows order_;
};

}  // namespace

std::vector<std::int16_t> sortedRows(const std::vector<SortKey>& keys) {
  if (const auto runs = runsOf(keys)) {
    RunSorter sorter(keys, *runs);
    for (const Run& run : *runs) {
      sorter.add(run);
    }
    return std::move(sorter).order();
  }
  Rows order(keys.size());
  std::iota(order.begin(), order.end(), std::int16_t{1});
  if (std::any_of(keys.begin(), keys.end(), hasNaN)) {
    exchangeInPasses(keys, order);
  } else {
    std::stable_sort(order.begin(), order.end(),
                     [&](std::int16_t a, std::int16_t b) { return outOfOrder(keyOf(keys, b), keyOf(keys, a)); });
  }
  return order;
}

void sort_item_table(ItemTable& table) {
  std::vector<SortKey> keys;
  keys.reserve(static_cast<std::size_t>(table.itemCount()));
  for (int i = 1; i <= table.itemCount(); ++i) {
    keys.push_back({table.itemPar(i, par::staff), table.itemPar(i, par::position), table.itemPar(i, par::height)});
  }
  table.reorder(sortedRows(keys));
}

}  // namespace kiv
