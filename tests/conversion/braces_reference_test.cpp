#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/conversion/braces_fixture.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// --- compared with a reference implementation: a list of instruments and their kinds ---

using ReferenceTable = std::vector<std::pair<float, std::int16_t>>;

const std::pair<float, std::int16_t>* referenceEntry(const ReferenceTable& table, float instrument) {
  for (const auto& entry : table) {
    if (entry.first == instrument) {
      return &entry;
    }
  }
  return nullptr;
}

void referenceCollect(const ItemTable& items, ReferenceTable& table) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.itemPar(i, 1) != 14 || !(items.itemPar(i, 5) >= 8)) {
      continue;
    }
    for (int j = 1; j <= items.itemCount(); ++j) {
      if (items.itemPar(j, 1) == 8 && items.itemPar(j, 2) == items.itemPar(i, 2) && items.itemPar(j, 9) != 0 &&
          referenceEntry(table, items.itemPar(j, 9)) == nullptr) {
        table.emplace_back(items.itemPar(j, 9), static_cast<std::int16_t>(items.itemPar(i, 4)));
      }
    }
  }
}

void referenceOutput(ItemTable& items, const ReferenceTable& table) {
  for (int i = 1, before = items.itemCount(); i <= before; ++i) {
    const auto* entry = items.itemPar(i, 1) == 8 ? referenceEntry(table, items.itemPar(i, 9)) : nullptr;
    if (entry != nullptr) {
      items.store_item(itemOf({14, items.itemPar(i, 2), 0, static_cast<float>(entry->second), 8}));
    }
  }
}

std::vector<Item> randomSystem(RandomGenerator& random) {
  const ItemType types[] = {ItemType::staff, ItemType::staff, ItemType::barline, ItemType::barline, ItemType::note};
  const float numbers[] = {1, 2, 3, 0, -0.0F, 2.5F, notANumber};
  const float kinds[] = {0, 7, 8, 8, 9, notANumber};
  const float instruments[] = {101, 102, 103, 104, 105, 106, 0, -0.0F, 101.5F, notANumber};
  std::vector<Item> items;
  for (std::uint32_t count = random.below(12); count > 0; --count) {
    const ItemType type = types[random.below(std::size(types))];
    Item item(type, numbers[random.below(std::size(numbers))], 5);
    item[4] = static_cast<float>(random.below(100));
    item[5] = kinds[random.below(std::size(kinds))];
    item[9] = instruments[random.below(std::size(instruments))];
    items.push_back(item);
  }
  return items;
}

TEST_F(Braces, AnyConversionsGiveWhatTheRulesSay) {
  RandomGenerator random(56);
  ReferenceTable referenceTable;
  ItemTable reference;
  for (int round = 0; round < 1000; ++round) {
    if (round % 8 == 0) {
      braces = {};
      referenceTable.clear();
    }
    items.clear();
    reference.clear();
    for (const Item& item : randomSystem(random)) {
      items.store_item(item);
      reference.store_item(item);
    }
    collectBraces(items, braces);
    referenceCollect(reference, referenceTable);
    outputBraces(items, braces);
    referenceOutput(reference, referenceTable);
    ASSERT_EQ(asText(items), asText(reference));
  }
}

}  // namespace
}  // namespace kiv::test
