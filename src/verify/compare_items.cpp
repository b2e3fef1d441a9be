#include "verify/compare_items.h"

#include <algorithm>
#include <cstddef>
#include <unordered_map>
#include <utility>

#include "base/bytes.h"
#include "base/exact_number.h"
#include "base/number.h"

namespace kiv::proof {
namespace {

/// An item of one of the results, found or expected.
struct Place {
  std::size_t result = 0;
  std::size_t index = 0;

  bool operator<(const Place& other) const { return std::pair(result, index) < std::pair(other.result, other.index); }
};

using PlacesByKey = std::unordered_map<std::string, std::vector<Place>>;

/// An exchange of what differs by so much is one change; what differs by more is one item lost and another added.
constexpr int mostDifferences = 4;
constexpr int otherStaff = 2;            // counts as much as so many parameters
constexpr std::size_t mostTried = 1000;  // of the items that are left, as the first ones are the near ones

class ItemComparison {
 public:
  explicit ItemComparison(const std::vector<ResultPage>& results) : results_(results) {}

  std::vector<Finding> findings();

 private:
  const ExpectedItem& expectedAt(Place place) const { return results_[place.result].expected.items[place.index]; }
  const PageItem& foundAt(Place place) const { return results_[place.result].found.items[place.index]; }

  void matchWhole();
  void matchElsewhere();
  void matchChanged();
  void tellRest();
  void tell(Place found, const std::string& what);
  std::string nameOf(const ExpectedItem& expected) const;
  int distanceOf(Place found, Place expected) const;

  const std::vector<ResultPage>& results_;
  std::vector<Place> missing_;  // expected, and not found
  std::vector<Place> surplus_;  // found, and not expected
  std::unordered_map<std::string, Place> known_;
  std::vector<std::pair<Place, Finding>> findings_;
};

std::string placedKey(std::size_t result, const Item& item) {
  return std::to_string(result) + ":" + wordBytes(item.par[par::staff]) + itemKey(item);
}

void ItemComparison::matchWhole() {
  PlacesByKey open;
  for (std::size_t result = 0; result < results_.size(); ++result) {
    const auto& found = results_[result].found.items;
    for (std::size_t i = found.size(); i > 0; --i) {
      open[placedKey(result, found[i - 1].item)].push_back({result, i - 1});
    }
  }
  for (std::size_t result = 0; result < results_.size(); ++result) {
    const auto& expected = results_[result].expected.items;
    for (std::size_t i = 0; i < expected.size(); ++i) {
      known_.emplace(itemKey(expected[i].item), Place{result, i});
      auto& places = open[placedKey(result, expected[i].item)];
      if (places.empty()) {
        missing_.push_back({result, i});
      } else {
        places.pop_back();
      }
    }
  }
  for (const auto& [key, places] : open) {
    surplus_.insert(surplus_.end(), places.begin(), places.end());
  }
  std::sort(surplus_.begin(), surplus_.end());
}

/// The item that stands elsewhere: in the same result where there is one, else in any.
void ItemComparison::matchElsewhere() {
  PlacesByKey open;
  for (const Place place : surplus_) {
    open[itemKey(foundAt(place).item)].push_back(place);
  }
  std::erase_if(missing_, [&](Place place) {
    const ExpectedItem& expected = expectedAt(place);
    const auto places = open.find(itemKey(expected.item));
    if (places == open.end() || places->second.empty()) {
      return false;
    }
    auto& all = places->second;
    const auto here = std::find_if(all.begin(), all.end(), [&](Place one) { return one.result == place.result; });
    const auto taken = here == all.end() ? all.begin() : here;
    const Place found = *taken;
    all.erase(taken);
    surplus_.erase(std::lower_bound(surplus_.begin(), surplus_.end(), found));
    const std::string staff = generalNumber(expected.item.par[par::staff]);
    tell(found, found.result == place.result
                    ? "is " + nameOf(expected) + ", which belongs on staff " + staff + " and stands on staff " +
                          generalNumber(foundAt(found).item.par[par::staff])
                    : "is " + nameOf(expected) + ", which belongs in " + results_[place.result].name);
    return true;
  });
}

int ItemComparison::distanceOf(Place found, Place expected) const {
  if (found.result != expected.result) {
    return mostDifferences + 1;
  }
  const Item& one = foundAt(found).item;
  const Item& other = expectedAt(expected).item;
  return distance(one, other) + (one.par[par::staff] == other.par[par::staff] ? 0 : otherStaff);
}

void ItemComparison::matchChanged() {
  std::erase_if(missing_, [&](Place place) {
    const auto from = std::lower_bound(surplus_.begin(), surplus_.end(), Place{place.result, 0});
    const auto end =
        from + static_cast<std::ptrdiff_t>(std::min(mostTried, static_cast<std::size_t>(surplus_.end() - from)));
    const auto nearest =
        std::min_element(from, end, [&](Place a, Place b) { return distanceOf(a, place) < distanceOf(b, place); });
    if (nearest == end || distanceOf(*nearest, place) > mostDifferences) {
      return false;
    }
    const Place found = *nearest;
    surplus_.erase(nearest);
    const float staff = foundAt(found).item.par[par::staff];
    const float rightStaff = expectedAt(place).item.par[par::staff];
    tell(found, "differs from " + nameOf(expectedAt(place)) + ": " +
                    difference(foundAt(found).item, expectedAt(place).item) +
                    (staff == rightStaff ? "" : ", P2 is " + exactNumber(staff) + ", not " + exactNumber(rightStaff)));
    return true;
  });
}

void ItemComparison::tellRest() {
  for (const Place place : missing_) {
    const ExpectedItem& expected = expectedAt(place);
    findings_.push_back({place,
                         {results_[place.result].name, 0,
                          "lacks " + nameOf(expected) + " on staff " + generalNumber(expected.item.par[par::staff])}});
  }
  for (const Place place : surplus_) {
    const Item& item = foundAt(place).item;
    const auto known = known_.find(itemKey(item));
    tell(place, known != known_.end()
                    ? "is " + nameOf(expectedAt(known->second)) + " once more"
                    : "is a " + nameOfType(item.par[par::type]) + " on staff " + generalNumber(item.par[par::staff]) +
                          " that neither the input holds nor a conversion adds");
  }
}

void ItemComparison::tell(Place found, const std::string& what) {
  findings_.push_back({found, {results_[found.result].name, foundAt(found).number, what}});
}

std::string ItemComparison::nameOf(const ExpectedItem& expected) const {
  const std::string type = nameOfType(expected.item.par[par::type]);
  return expected.origin.file.empty()
             ? "the " + type + " that a conversion adds at " + generalNumber(expected.item.par[par::position])
             : "item " + std::to_string(expected.origin.number) + " of " + expected.origin.file + " (" + type + ")";
}

std::vector<Finding> ItemComparison::findings() {
  matchWhole();
  matchElsewhere();
  matchChanged();
  tellRest();
  std::stable_sort(findings_.begin(), findings_.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<Finding> all;
  for (auto& [place, finding] : findings_) {
    all.push_back(std::move(finding));
  }
  return all;
}

}  // namespace

std::vector<Finding> compareItems(const std::vector<ResultPage>& results) {
  return ItemComparison(results).findings();
}

std::vector<Finding> compareBytes(const ResultPage& result) {
  const auto& found = result.found.items;
  const auto& expected = result.expected.items;
  std::vector<Item> items;
  for (std::size_t i = 0; i < expected.size(); ++i) {
    const Item& item = result.expected.inOrder ? expected[i].item : found[i].item;
    if (itemKey(item) != itemKey(found[i].item) || item.par[par::staff] != found[i].item.par[par::staff]) {
      return {{result.name, found[i].number, "stands where another item belongs"}};
    }
    items.push_back(item);
  }
  const std::string bytes = pageOf(items);
  if (bytes == result.found.bytes) {
    return {};
  }
  const auto [ours, theirs] =
      std::mismatch(bytes.begin(), bytes.end(), result.found.bytes.begin(), result.found.bytes.end());
  return {{result.name, 0, "differs at byte " + std::to_string(ours - bytes.begin()) + ", which is part of no item"}};
}

}  // namespace kiv::proof
