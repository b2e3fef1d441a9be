#include "tests/reference/conversion.h"

#include "base/number.h"
#include "messages/run_time_errors.h"
#include "tests/reference/order_table.h"

namespace kiv::reference {

std::int16_t whole(const ItemTable& items, int i, int p) {
  const auto number = toInt16(items.itemPar(i, p));
  if (!number) {
    endProgram(messages::overflow(items.location(i)));
  }
  return *number;
}

void appendStaffBarline(Conversion& run, std::int16_t instr, float staff, float position, std::int16_t kind) {
  Item item(ItemType::barline, staff, position);
  item[par::spannedStaves] = 1;
  item[par::kind] = kind;
  item[par::spanCode] = setDetailBarline(run.order, instr);
  if (item[par::spanCode] == 1) {
    item[par::spanSize] = 5;
  }
  run.items.store_item(item);
}

}  // namespace kiv::reference
