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
    items.push_back(table.item(i));
  }
  return items;
}

}  // namespace kiv::test
