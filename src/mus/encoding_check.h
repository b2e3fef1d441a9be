#pragma once

#include <optional>
#include <string_view>

#include "messages/message.h"
#include "mus/item_table.h"

namespace kiv {

/// An item that an encoded page does not give back.
struct LostItem {
  int number = 0;     ///< in the encoded page, from 1; one more than the page has when something follows them
  Location location;  ///< where the item comes from; without a file when no file has it

  bool operator==(const LostItem&) const = default;
};

/// Reads an encoded page back and compares it with the table that it was encoded from. Returns the first item that does
/// not come back as the writer was to write it; nullopt when the page is right. What the writer cuts and sets by its
/// rules counts as right.
std::optional<LostItem> findLostItem(std::string_view page, const ItemTable& table);

}  // namespace kiv
