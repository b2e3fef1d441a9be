#pragma once

#include <string_view>
#include <vector>

#include "tests/support/pages.h"

namespace kiv::test {

/// The items that the page text describes.
inline std::vector<Item> itemsOf(std::string_view text) {
  FakeHost host;
  const ItemTable table = tableOf(host, text);
  std::vector<Item> items;
  for (int i = 1; i <= table.itemCount(); ++i) {
    Item item;
    for (int p = 1; p <= parameterCount; ++p) {
      item.par[static_cast<std::size_t>(p)] = table.itemPar(i, p);
    }
    item.text = table.itemText(i);
    items.push_back(item);
  }
  return items;
}

}  // namespace kiv::test
