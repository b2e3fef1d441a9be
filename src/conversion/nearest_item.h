#pragma once

#include <vector>

#include "mus/item_table.h"

namespace kiv {

/// Finds, among the items added, the one that is nearest to a position on one side of it: less than 999 page
/// units away as singles subtract, and of several as near as that the one added first.
class NearestItem {
 public:
  /// All items must be added before the first search.
  void add(const ItemTable& items, int i);
  /// Sorts the items added.
  void sort();

  /// The nearest item to the right of x, 0 when there is none.
  int rightOf(float x) const;
  /// The nearest item to the left of x, 0 when there is none.
  int leftOf(float x) const;

 private:
  struct Place {
    float position = 0;
    int item = 0;
  };
  std::vector<Place> places_;
};

}  // namespace kiv
