#include "conversion/reference_staff.h"

namespace kiv {

StaffPair findStaffPair(const SystemPage& page, std::int16_t instrument, std::string_view procedure) {
  int rest = 0;
  int reference = 0;
  for (int i = 1; i <= page.items.itemCount(); ++i) {
    if (!isStaff(page.items, i)) {
      continue;
    }
    if (rest == 0 && page.items.itemPar(i, par::instrument) == static_cast<float>(instrument)) {
      rest = i;
    }
    if (reference == 0 && page.items.itemPar(i, par::mark) == 0) {
      reference = i;
    }
  }
  if (rest == 0) {
    page.host.fatal("Logical error 1 in " + std::string(procedure));
  }
  if (reference == 0) {
    page.host.fatal("Logical error 2 in " + std::string(procedure));
  }
  return {rest, page.items.itemPar(rest, par::staff), page.items.itemPar(reference, par::staff)};
}

}  // namespace kiv
