#include "analysis/table_rows.h"

#include <cstddef>

namespace kiv {

TableRows::TableRows(const ItemTable& table) {
  constexpr std::size_t typicalCount = 32;
  staves.reserve(typicalCount);
  listed.reserve(2 * typicalCount);
  for (int i = 1; i <= table.itemCount(); ++i) {
    const ItemType type = table.type(i);
    if (type == ItemType::staff) {
      staves.push_back(i);
      listed.push_back(i);
    } else if (type == ItemType::rest) {
      listed.push_back(i);
      if (table.itemPar(i, par::cuedInstrument) != 0) {
        cues.push_back(i);
      }
    } else if (isLeftBarline(table, i)) {
      listed.push_back(i);
    }
  }
}

}  // namespace kiv
