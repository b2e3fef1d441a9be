#pragma once

#include <optional>
#include <string_view>
#include <vector>

#include "mus/item_table.h"

namespace kiv::fuzz {

using Items = std::vector<Item>;

/// The items of a page file; nullopt when it has a structural error.
std::optional<Items> itemsOf(std::string_view file);

bool isStaffItem(const Item& item);
/// A barline that is no brace.
bool isBarlineProper(const Item& item);

/// Zeros are equal whatever their sign, as a zero at the end of an item is not written; NaNs by their bytes.
bool sameNumber(float one, float other);
/// An order in which the same items, and no others, are equals.
bool isBefore(const Item& one, const Item& other);
bool sameItem(const Item& one, const Item& other);

/// What reading gives of an item after writing it: the writer clears P4 of staves, sets the length of counted texts,
/// and fills short ones with blanks.
Item asReadAgain(Item item);

/// False for the one item that the writer makes unreadable, a counted text of no characters.
bool isReadableAgain(const Item& item);

}  // namespace kiv::fuzz
