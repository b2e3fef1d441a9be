#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "tests/conversion/set_staff_attributes_fixture.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// --- compared with a reference implementation: a scan of the items for every staff ---

/// The item of a type on a staff that ends the scan as the best, 0 when there is none.
int referenceScan(const ItemTable& items, ItemType type, float staff) {
  float best = -9999;
  int found = 0;
  for (int j = 1; j <= items.itemCount(); ++j) {
    if (items.type(j) == type && items.itemPar(j, 2) == staff && items.itemPar(j, 3) > best) {
      best = items.itemPar(j, 3);
      found = j;
    }
  }
  return found;
}

void referenceSetStaffAttributes(const ItemTable& items, OrderTable& order) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.itemPar(i, 1) != 8) {
      continue;
    }
    int k = 1;
    while (k <= order.count() && order.entry(k).instr != items.itemPar(i, 9)) {
      ++k;
    }
    if (k > order.count()) {
      continue;
    }
    OrderEntry& entry = order.entry(k);
    if (!entry.size.isKnown()) {
      entry.size = MarkedValue(items.itemPar(i, 5));
      entry.lines = items.itemPar(i, 7);
      entry.par11 = items.itemPar(i, 11);
    }
    if (const int j = referenceScan(items, ItemType::clef, items.itemPar(i, 2)); j != 0) {
      entry.clef = MarkedValue(items.itemPar(j, 5));
      entry.clefHeight = items.itemPar(j, 4);
    }
    if (const int j = referenceScan(items, ItemType::keySignature, items.itemPar(i, 2)); j != 0) {
      entry.key = items.itemPar(j, 5);
      entry.keyType = items.itemPar(j, 6);
    }
    if (const int j = referenceScan(items, ItemType::timeSignature, items.itemPar(i, 2)); j != 0) {
      entry.timeUp = items.itemPar(j, 5);
      entry.timeDn = items.itemPar(j, 6);
    }
  }
}

Item randomItem(RandomGenerator& random) {
  const ItemType types[] = {ItemType::staff, ItemType::clef, ItemType::keySignature, ItemType::timeSignature,
                            ItemType::note};
  const float positions[] = {-10000, -9999, -9998, -1, 0, 5, 5, 90, infinity, notANumber};
  const float instruments[] = {101, 101, 102, 103, 102.5F, 7, -101, notANumber};
  const float sizes[] = {0, 1, 2.5F, -1000, -1500};
  const ItemType type = types[random.below(std::size(types))];
  const auto staff = static_cast<float>(random.below(4));
  Item item(type, staff, positions[random.below(std::size(positions))]);
  item[4] = static_cast<float>(random.below(100));
  item[5] = sizes[random.below(std::size(sizes))];
  item[6] = static_cast<float>(random.below(100));
  item[7] = static_cast<float>(random.below(7));
  item[par::instrument] = instruments[random.below(std::size(instruments))];
  item[par::par11] = static_cast<float>(random.below(100));
  return item;
}

TEST_F(SetStaffAttributes, AnySystemsGiveWhatTheRulesSay) {
  RandomGenerator random(57);
  OrderTable expected = order;
  for (int round = 0; round < 400; ++round) {
    if (round % 20 == 0) {
      order = {};
      setInstrumentOrder({101, 102, 103}, order);
      expected = order;
    }
    ItemTable items;
    for (std::uint32_t count = random.below(25); count > 0; --count) {
      items.store_item(randomItem(random));
    }
    setStaffAttributes(items, order);
    referenceSetStaffAttributes(items, expected);
    for (int k = 1; k <= 3; ++k) {
      ASSERT_EQ(known(order.entry(k)), known(expected.entry(k))) << asText(items);
    }
  }
}

}  // namespace
}  // namespace kiv::test
