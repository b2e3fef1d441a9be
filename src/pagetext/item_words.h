#pragma once

#include <string_view>
#include <vector>

#include "mus/item_type.h"

namespace kiv {

/// A word of the page text for one parameter of an item.
struct ParameterWord {
  std::string_view word;
  int parameter = 0;
};

/// A word of the page text for one type of item, and its words for parameters beyond P2 and P3.
struct ItemWord {
  std::string_view word;
  ItemType type;
  std::vector<ParameterWord> parameters;
};

/// The words for the types that have one.
const std::vector<ItemWord>& itemWords();
/// Null when there is no word for the type, or no type of that word.
const ItemWord* itemWordOf(ItemType type);
const ItemWord* itemWordNamed(std::string_view word);

}  // namespace kiv
