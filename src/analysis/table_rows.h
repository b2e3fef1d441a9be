#pragma once

#include <vector>

#include "mus/item_table.h"

namespace kiv {

/// The rows of a page that an analysis numbers, checks or lists, as the page is when it has been read. Each in table
/// order.
struct TableRows {
  explicit TableRows(const ItemTable& table);

  std::vector<int> staves;
  std::vector<int> cues;    ///< rests that refer to an instrument
  std::vector<int> listed;  ///< staves, rests and left barlines
};

}  // namespace kiv
