#include "conversion/reference_staff.h"

#include "messages/conversion_messages.h"

namespace kiv {

StaffPair findStaffPair(const ItemTable& items, std::int16_t instrument, std::string_view procedure) {
  int rest = 0;
  int reference = 0;
  for (const int i : items.signRows()) {
    if (!isStaff(items, i)) {
      continue;
    }
    if (rest == 0 && items.itemPar(i, par::instrument) == static_cast<float>(instrument)) {
      rest = i;
    }
    if (reference == 0 && items.itemPar(i, par::mark) == mark::none) {
      reference = i;
    }
  }
  if (rest == 0) {
    endProgram(messages::noRestStaff(procedure));
  }
  if (reference == 0) {
    endProgram(messages::noReferenceStaff(procedure));
  }
  return {rest, items.itemPar(rest, par::staff), items.itemPar(reference, par::staff)};
}

}  // namespace kiv
