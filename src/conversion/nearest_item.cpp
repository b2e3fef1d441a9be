#include "conversion/nearest_item.h"

#include <algorithm>
#include <cmath>

namespace kiv {
namespace {

constexpr float tooFar = 999;

/// The item with the lowest index among those from first on that are equally far away.
template <typename Iterator, typename Distance>
int firstOfTheNearest(Iterator first, Iterator end, Distance distance) {
  if (first == end || !(distance(*first) < tooFar)) {
    return 0;
  }
  int item = first->item;
  for (Iterator next = first + 1; next != end && distance(*next) == distance(*first); ++next) {
    item = std::min(item, next->item);
  }
  return item;
}

}  // namespace

void NearestItem::add(const ItemTable& items, int i) {
  const float position = items.itemPar(i, par::position);
  if (!std::isnan(position)) {  // it is on no side of anything
    places_.push_back({position, i});
  }
}

void NearestItem::sort() {
  std::stable_sort(places_.begin(), places_.end(),
                   [](const Place& a, const Place& b) { return a.position < b.position; });
}

int NearestItem::rightOf(float x) const {
  const auto first = std::upper_bound(places_.begin(), places_.end(), x,
                                      [](float y, const Place& place) { return y < place.position; });
  return firstOfTheNearest(first, places_.end(), [x](const Place& place) { return place.position - x; });
}

int NearestItem::leftOf(float x) const {
  const auto end = std::lower_bound(places_.begin(), places_.end(), x,
                                    [](const Place& place, float y) { return place.position < y; });
  return firstOfTheNearest(std::make_reverse_iterator(end), places_.rend(),
                           [x](const Place& place) { return x - place.position; });
}

}  // namespace kiv
