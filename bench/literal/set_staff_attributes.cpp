#include "bench/literal/order_table.h"

namespace kiv::literal {
namespace {

constexpr float mark = 1000;
constexpr float leftOfEverything = -9999;

void takeClef(Conversion& run, float staff, std::size_t k) {
  float best = leftOfEverything;
  for (int j = 1; j <= run.items.itemCount(); ++j) {
    if (isOfType(run.items, j, type::clef) && run.items.itemPar(j, par::staff) == staff &&
        run.items.itemPar(j, par::position) > best) {
      best = run.items.itemPar(j, par::position);
      run.order.clef[k] = run.items.itemPar(j, par::kind) + mark;
      run.order.hite[k] = run.items.itemPar(j, par::height);
    }
  }
}

void takeKey(Conversion& run, float staff, std::size_t k) {
  float best = leftOfEverything;
  for (int j = 1; j <= run.items.itemCount(); ++j) {
    if (isOfType(run.items, j, type::keySignature) && run.items.itemPar(j, par::staff) == staff &&
        run.items.itemPar(j, par::position) > best) {
      best = run.items.itemPar(j, par::position);
      run.order.key[k] = run.items.itemPar(j, par::key);
      run.order.type[k] = run.items.itemPar(j, par::keyType);
    }
  }
}

void takeTime(Conversion& run, float staff, std::size_t k) {
  float best = leftOfEverything;
  for (int j = 1; j <= run.items.itemCount(); ++j) {
    if (isOfType(run.items, j, type::timeSignature) && run.items.itemPar(j, par::staff) == staff &&
        run.items.itemPar(j, par::position) > best) {
      best = run.items.itemPar(j, par::position);
      run.order.timeUp[k] = run.items.itemPar(j, par::upperNumber);
      run.order.timeDn[k] = run.items.itemPar(j, par::lowerNumber);
    }
  }
}

}  // namespace

void setStaffAttributes(Conversion& run) {
  OrderTable& order = run.order;
  for (int i = 1; i <= run.items.itemCount() && i <= itemLimit; ++i) {
    if (!isOfType(run.items, i, type::staff)) {
      continue;
    }
    const std::size_t k = rowOf(order, run.items.itemPar(i, par::instrument));
    if (k == 0) {
      continue;
    }
    if (order.size[k] == 0) {
      order.size[k] = run.items.itemPar(i, par::size) + mark;
      order.lines[k] = run.items.itemPar(i, par::lines);
      order.par11[k] = run.items.itemPar(i, par::par11);
    }
    const float staff = run.items.itemPar(i, par::staff);
    takeClef(run, staff, k);
    takeKey(run, staff, k);
    takeTime(run, staff, k);
  }
}

}  // namespace kiv::literal
