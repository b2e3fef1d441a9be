#pragma once

#include <string>

#include "mus/item_table.h"
#include "platform/host.h"

namespace kiv {

/// The system being converted: the table that holds its items, and the file that its run-time errors name.
struct SystemPage {
  Host& host;
  const std::string& musFileName;
  ItemTable& items;

  /// Parameter p of item i as a 16-bit integer; one that does not fit ends the program.
  std::int16_t whole(int i, int p) const { return wholePar(host, musFileName, items, i, p); }
  /// Parameter p of the item at the end of the table.
  float lastPar(int p) const { return items.itemPar(items.itemCount(), p); }
  void append(const Item& item) const { items.store_item(host, item); }
};

/// An item of which only type, staff and position are given; all else is 0.
Item newItem(float type, float staff, float position);

}  // namespace kiv
