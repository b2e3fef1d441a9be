#include "conversion/system_page.h"

namespace kiv {

Item newItem(float type, float staff, float position) {
  Item item;
  item.par[par::type] = type;
  item.par[par::staff] = staff;
  item.par[par::position] = position;
  return item;
}

}  // namespace kiv
