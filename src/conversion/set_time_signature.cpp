#include "conversion/set_time_signature.h"

#include <array>

#include "conversion/reference_staff.h"

namespace kiv {

void setTimeSignature(ItemTable& items, std::int16_t instrument) {
  const StaffPair staves = findStaffPair(items, instrument, "setTimeSignature");
  for (const int i : items.signRows()) {
    if (items.type(i) != ItemType::timeSignature || items.itemPar(i, par::staff) != staves.reference) {
      continue;
    }
    Item time(ItemType::timeSignature, staves.rest, items.itemPar(i, par::position));
    for (const int p : std::array{par::height, par::upperNumber, par::lowerNumber}) {
      time[p] = items.itemPar(i, p);
    }
    items.store_item(time);
  }
}

}  // namespace kiv
