#include "conversion/set_time_signature.h"

#include <array>

#include "conversion/reference_staff.h"

namespace kiv {

void setTimeSignature(const SystemPage& page, std::int16_t instrument) {
  const StaffPair staves = findStaffPair(page, instrument, "setTimeSignature");
  const int before = page.items.itemCount();
  for (int i = 1; i <= before; ++i) {
    if (page.items.itemPar(i, par::type) != type::timeSignature ||
        page.items.itemPar(i, par::staff) != staves.reference) {
      continue;
    }
    Item time = newItem(type::timeSignature, staves.rest, page.items.itemPar(i, par::position));
    for (const int p : std::array{par::height, par::upperNumber, par::lowerNumber}) {
      time.par[static_cast<std::size_t>(p)] = page.items.itemPar(i, p);
    }
    page.append(time);
  }
}

}  // namespace kiv
