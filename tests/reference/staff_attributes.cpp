#include "tests/reference/order_table.h"

namespace kiv::reference {
namespace {

constexpr float marker = 1000;
constexpr float leftOfEverything = -9999;

void copyClef(const ItemTable& items, float staff, OrderTable& order, std::size_t k) {
  float best = leftOfEverything;
  for (int j = 1; j <= items.itemCount(); ++j) {
    if (items.type(j) == ItemType::clef && items.itemPar(j, par::staff) == staff &&
        items.itemPar(j, par::position) > best) {
      best = items.itemPar(j, par::position);
      order.clef[k] = items.itemPar(j, par::kind) + marker;
      order.clefHeight[k] = items.itemPar(j, par::height);
    }
  }
}

void copyKey(const ItemTable& items, float staff, OrderTable& order, std::size_t k) {
  float best = leftOfEverything;
  for (int j = 1; j <= items.itemCount(); ++j) {
    if (items.type(j) == ItemType::keySignature && items.itemPar(j, par::staff) == staff &&
        items.itemPar(j, par::position) > best) {
      best = items.itemPar(j, par::position);
      order.key[k] = items.itemPar(j, par::key);
      order.keyType[k] = items.itemPar(j, par::keyType);
    }
  }
}

void copyTime(const ItemTable& items, float staff, OrderTable& order, std::size_t k) {
  float best = leftOfEverything;
  for (int j = 1; j <= items.itemCount(); ++j) {
    if (items.type(j) == ItemType::timeSignature && items.itemPar(j, par::staff) == staff &&
        items.itemPar(j, par::position) > best) {
      best = items.itemPar(j, par::position);
      order.timeUp[k] = items.itemPar(j, par::upperNumber);
      order.timeDn[k] = items.itemPar(j, par::lowerNumber);
    }
  }
}

}  // namespace

void setStaffAttributes(const ItemTable& items, OrderTable& order) {
  for (int i = 1; i <= items.itemCount() && i <= itemLimit; ++i) {
    if (!isStaff(items, i)) {
      continue;
    }
    const std::size_t k = rowOf(order, items.itemPar(i, par::instrument));
    if (k == 0) {
      continue;
    }
    if (order.size[k] == 0) {
      order.size[k] = items.itemPar(i, par::size) + marker;
      order.lines[k] = items.itemPar(i, par::lines);
      order.par11[k] = items.itemPar(i, par::par11);
    }
    const float staff = items.itemPar(i, par::staff);
    copyClef(items, staff, order, k);
    copyKey(items, staff, order, k);
    copyTime(items, staff, order, k);
  }
}

}  // namespace kiv::reference
