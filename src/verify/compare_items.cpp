#include "verify/compare_items.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <utility>

#include "base/exact_number.h"
#include "verify/numbers.h"
#include "verify/words.h"

namespace kiv::proof {
namespace {

/// The index of an item, found or expected, in one of the results.
struct ItemIndex {
  std::size_t result = 0;
  std::size_t index = 0;

  bool operator<(const ItemIndex& other) const {
    return std::pair(result, index) < std::pair(other.result, other.index);
  }
};

using IndicesByKey = std::unordered_map<std::string, std::vector<ItemIndex>>;

/// Two items that differ by at most this many parameters are one item that was changed; others are one item lost and
/// another added.
constexpr int mostDifferences = 4;
constexpr int otherStaff = 2;            // in parameters: what another staff counts
constexpr std::size_t mostTried = 1000;  // unmatched items of a result that an expected item is compared with

class ItemComparison {
 public:
  explicit ItemComparison(const std::vector<ResultPage>& results) : results_(results) {}

  std::vector<Finding> findings();

 private:
  const ExpectedItem& expectedAt(ItemIndex at) const { return results_[at.result].expected.items[at.index]; }
  const PageItem& foundAt(ItemIndex at) const { return results_[at.result].found.items[at.index]; }

  void matchIdentical();
  void matchMoved();
  void matchChanged();
  void reportUnmatched();
  void report(ItemIndex found, const std::string& what);
  std::string nameOf(const ExpectedItem& expected) const;
  int distanceOf(ItemIndex found, ItemIndex expected) const;

  const std::vector<ResultPage>& results_;
  std::vector<ItemIndex> missing_;                    // expected, and not found
  std::vector<ItemIndex> surplus_;                    // found, and not expected
  std::unordered_map<std::string, ItemIndex> known_;  // the expected items
  std::vector<std::pair<ItemIndex, Finding>> findings_;
};

/// Whether all bits of the items are the same, and their staff is a number.
bool isSameItem(const Item& one, const Item& other) {
  const auto haveSameBits = [](float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
  };
  return one[par::staff] == other[par::staff] &&
         std::ranges::equal(one.parameters(), other.parameters(), haveSameBits) && one.text == other.text;
}

/// The key of an item on its staff in its result.
std::string fullKey(std::size_t result, const Item& item) {
  std::string key = std::to_string(result) + ":";
  appendWord(item[par::staff], key);
  appendItemKey(item, key);
  return key;
}

void ItemComparison::matchIdentical() {
  IndicesByKey open;
  for (std::size_t result = 0; result < results_.size(); ++result) {
    const auto& found = results_[result].found.items;
    for (std::size_t i = found.size(); i > 0; --i) {
      open[fullKey(result, found[i - 1].item)].push_back({result, i - 1});
    }
  }
  for (std::size_t result = 0; result < results_.size(); ++result) {
    const auto& expected = results_[result].expected.items;
    for (std::size_t i = 0; i < expected.size(); ++i) {
      known_.emplace(itemKey(expected[i].item), ItemIndex{result, i});
      auto& indices = open[fullKey(result, expected[i].item)];
      if (indices.empty()) {
        missing_.push_back({result, i});
      } else {
        indices.pop_back();
      }
    }
  }
  for (const auto& [key, indices] : open) {
    surplus_.insert(surplus_.end(), indices.begin(), indices.end());
  }
  std::sort(surplus_.begin(), surplus_.end());
}

/// Matches items that are on another staff or in another result. One in the same result comes first.
void ItemComparison::matchMoved() {
  IndicesByKey open;
  for (const ItemIndex at : surplus_) {
    open[itemKey(foundAt(at).item)].push_back(at);
  }
  std::erase_if(missing_, [&](ItemIndex at) {
    const ExpectedItem& expected = expectedAt(at);
    const auto matches = open.find(itemKey(expected.item));
    if (matches == open.end() || matches->second.empty()) {
      return false;
    }
    auto& all = matches->second;
    const auto inSameResult =
        std::find_if(all.begin(), all.end(), [&](ItemIndex one) { return one.result == at.result; });
    const auto match = inSameResult == all.end() ? all.begin() : inSameResult;
    const ItemIndex found = *match;
    all.erase(match);
    surplus_.erase(std::lower_bound(surplus_.begin(), surplus_.end(), found));
    const std::string staff = generalForm(expected.item[par::staff]);
    report(found, found.result == at.result
                      ? "is " + nameOf(expected) + ", which belongs on staff " + staff + " and stands on staff " +
                            generalForm(foundAt(found).item[par::staff])
                      : "is " + nameOf(expected) + ", which belongs in " + results_[at.result].name);
    return true;
  });
}

int ItemComparison::distanceOf(ItemIndex found, ItemIndex expected) const {
  if (found.result != expected.result) {
    return mostDifferences + 1;
  }
  const Item& one = foundAt(found).item;
  const Item& other = expectedAt(expected).item;
  return distance(one, other) + (one[par::staff] == other[par::staff] ? 0 : otherStaff);
}

void ItemComparison::matchChanged() {
  std::erase_if(missing_, [&](ItemIndex at) {
    const auto from = std::lower_bound(surplus_.begin(), surplus_.end(), ItemIndex{at.result, 0});
    const auto end =
        from + static_cast<std::ptrdiff_t>(std::min(mostTried, static_cast<std::size_t>(surplus_.end() - from)));
    const auto nearest =
        std::min_element(from, end, [&](ItemIndex a, ItemIndex b) { return distanceOf(a, at) < distanceOf(b, at); });
    if (nearest == end || distanceOf(*nearest, at) > mostDifferences) {
      return false;
    }
    const ItemIndex found = *nearest;
    surplus_.erase(nearest);
    const float staff = foundAt(found).item[par::staff];
    const float rightStaff = expectedAt(at).item[par::staff];
    report(found,
           "differs from " + nameOf(expectedAt(at)) + ": " + difference(foundAt(found).item, expectedAt(at).item) +
               (staff == rightStaff ? "" : ", P2 is " + exactNumber(staff) + ", not " + exactNumber(rightStaff)));
    return true;
  });
}

void ItemComparison::reportUnmatched() {
  for (const ItemIndex at : missing_) {
    const ExpectedItem& expected = expectedAt(at);
    findings_.push_back({at,
                         {results_[at.result].name, 0,
                          "lacks " + nameOf(expected) + " on staff " + generalForm(expected.item[par::staff])}});
  }
  for (const ItemIndex at : surplus_) {
    const Item& item = foundAt(at).item;
    const auto known = known_.find(itemKey(item));
    report(at, known != known_.end()
                   ? "is " + nameOf(expectedAt(known->second)) + " once more"
                   : "is a " + nameOfType(item.type()) + " on staff " + generalForm(item[par::staff]) +
                         " that neither the input holds nor a conversion adds");
  }
}

void ItemComparison::report(ItemIndex found, const std::string& what) {
  findings_.push_back({found, {results_[found.result].name, foundAt(found).number, what}});
}

std::string ItemComparison::nameOf(const ExpectedItem& expected) const {
  const std::string type = nameOfType(expected.item.type());
  return expected.origin.isInput()
             ? "item " + std::to_string(expected.origin.number) + " of " + *expected.origin.file + " (" + type + ")"
             : "the " + type + " that a conversion adds at " + generalForm(expected.item[par::position]);
}

std::vector<Finding> ItemComparison::findings() {
  matchIdentical();
  matchMoved();
  matchChanged();
  reportUnmatched();
  std::stable_sort(findings_.begin(), findings_.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<Finding> all;
  for (auto& [at, finding] : findings_) {
    all.push_back(std::move(finding));
  }
  return all;
}

}  // namespace

std::vector<Finding> compareItems(const std::vector<ResultPage>& results) {
  return ItemComparison(results).findings();
}

bool isAsExpected(const ResultPage& result) {
  const auto& found = result.found.items;
  const auto& expected = result.expected.items;
  const bool areSameItems =
      result.found.error.empty() &&
      std::equal(found.begin(), found.end(), expected.begin(), expected.end(),
                 [](const PageItem& one, const ExpectedItem& other) { return isSameItem(one.item, other.item); });
  if (!areSameItems) {
    return false;
  }
  PageBytes bytes;
  for (const ExpectedItem& item : expected) {
    bytes.add(item.item);
  }
  return std::move(bytes).complete() == result.found.bytes;
}

std::vector<Finding> compareBytes(const ResultPage& result) {
  const auto& found = result.found.items;
  const auto& expected = result.expected.items;
  PageBytes page;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const Item& item = expected[i].item;
    if (itemKey(item) != itemKey(found[i].item) || item[par::staff] != found[i].item[par::staff]) {
      return {{result.name, found[i].number, "stands where another item belongs"}};
    }
    page.add(item);
  }
  const std::string bytes = std::move(page).complete();
  if (bytes == result.found.bytes) {
    return {};
  }
  const auto [ours, theirs] =
      std::mismatch(bytes.begin(), bytes.end(), result.found.bytes.begin(), result.found.bytes.end());
  return {{result.name, 0, "differs at byte " + std::to_string(ours - bytes.begin()) + ", which is part of no item"}};
}

}  // namespace kiv::proof
