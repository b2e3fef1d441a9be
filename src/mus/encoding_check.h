#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "messages/message.h"
#include "mus/item_table.h"

namespace kiv {

/// An item that an encoded page does not give back.
struct LostItem {
  int number = 0;     ///< in the encoded page, from 1; one more than the page has when something follows them
  Location location;  ///< where the item comes from; without a file when no file has it

  bool operator==(const LostItem&) const = default;
};

/// A table, and the rows of it that are written, in the order of the page.
struct WrittenRows {
  const ItemTable& table;
  const std::vector<std::int16_t>& rows;
};

/// Reads an encoded page back and compares it with the table that it was encoded from. Returns the first item that does
/// not come back as the writer was to write it; nullopt when the page is right. What the writer cuts and sets by its
/// rules counts as right.
std::optional<LostItem> findLostItem(std::string_view page, const ItemTable& table);
/// The same of a table whose written rows are known.
std::optional<LostItem> findLostItem(std::string_view page, const WrittenRows& written);

}  // namespace kiv
