#include "conversion/nearest_item.h"

#include <limits>
#include <vector>

#include <gtest/gtest.h>

#include "base/exact_number.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

/// Items at places, and searches among them all.
class NearestItems : public ::testing::Test {
 protected:
  NearestItem at(const std::vector<float>& positions) {
    items.clear();
    NearestItem nearest;
    for (const float position : positions) {
      items.store_item(Item(ItemType::note, 1, position));
      nearest.add(items, items.itemCount());
    }
    nearest.sort();
    return nearest;
  }

  ItemTable items;
};

TEST_F(NearestItems, NearestOnTheRightIsFoundWhateverTheItemOrder) {
  const NearestItem nearest = at({60, 20, 40, -5});
  EXPECT_EQ(nearest.rightOf(10), 2);
  EXPECT_EQ(nearest.rightOf(25), 3);
  EXPECT_EQ(nearest.rightOf(41), 1);
  EXPECT_EQ(nearest.rightOf(-6), 4);
  EXPECT_EQ(nearest.rightOf(61), 0);
}

TEST_F(NearestItems, NearestOnTheLeftIsFoundWhateverTheItemOrder) {
  const NearestItem nearest = at({60, 20, 40, -5});
  EXPECT_EQ(nearest.leftOf(70), 1);
  EXPECT_EQ(nearest.leftOf(59), 3);
  EXPECT_EQ(nearest.leftOf(21), 2);
  EXPECT_EQ(nearest.leftOf(19), 4);
  EXPECT_EQ(nearest.leftOf(-6), 0);
}

TEST_F(NearestItems, ItemAtThePositionItselfIsOnNeitherSide) {
  const NearestItem nearest = at({20, 0, -0.0F});
  EXPECT_EQ(nearest.rightOf(20), 0);
  EXPECT_EQ(nearest.leftOf(0), 0) << "zero of either sign is one place";
  EXPECT_EQ(nearest.leftOf(-0.0F), 0);
  EXPECT_EQ(nearest.rightOf(0), 1);
  EXPECT_EQ(nearest.rightOf(19.999998F), 1);
  EXPECT_EQ(nearest.leftOf(20.000002F), 1);
}

TEST_F(NearestItems, FirstOfTwoEquallyNearItemsIsFound) {
  const NearestItem nearest = at({50, 20, 20, 50, 50});
  EXPECT_EQ(nearest.rightOf(10), 2);
  EXPECT_EQ(nearest.rightOf(20), 1);
  EXPECT_EQ(nearest.leftOf(60), 1);
  EXPECT_EQ(nearest.leftOf(50), 2);
}

TEST_F(NearestItems, DistancesAreSingles) {
  // Both lie 501 away in single precision.
  EXPECT_EQ(at({1.0000001F, 1}).rightOf(-500), 1);
  EXPECT_EQ(at({-1.0000001F, -1}).leftOf(500), 1);
  EXPECT_EQ(at({1, 1.0000001F}).rightOf(-500), 1);
  EXPECT_EQ(at({1.0001F, 1}).rightOf(-500), 2);
  EXPECT_EQ(at({-1.0001F, -1}).leftOf(500), 2);
}

TEST_F(NearestItems, ManyDistancesThatAreOneAsSingles) {
  EXPECT_EQ(at({2, 1.0000004F, 1, 1.0000002F, 1.0000001F}).rightOf(-500), 2);
  EXPECT_EQ(at({-2, -1.0000004F, -1, -1.0000002F, -1.0000001F}).leftOf(500), 2);
}

TEST_F(NearestItems, DistanceOf999IsTooFar) {
  EXPECT_EQ(at({1000}).rightOf(1), 0);
  EXPECT_EQ(at({999.99994F}).rightOf(1), 1);
  EXPECT_EQ(at({5000}).rightOf(1), 0);
  EXPECT_EQ(at({1}).leftOf(1000), 0);
  EXPECT_EQ(at({1}).leftOf(999.99994F), 1);
  EXPECT_EQ(at({1}).leftOf(5000), 0);
  EXPECT_EQ(at({0.99999994F}).rightOf(-998), 0) << "it is 999 away as a single";
  EXPECT_EQ(at({-0.99999994F}).leftOf(998), 0) << "it is 999 away as a single";
}

TEST_F(NearestItems, PositionThatIsNoNumberIsOnNeitherSide) {
  const NearestItem nearest = at({notANumber, 20, notANumber, 10, notANumber});
  EXPECT_EQ(nearest.rightOf(5), 4);
  EXPECT_EQ(nearest.leftOf(25), 2);
  EXPECT_EQ(nearest.rightOf(15), 2);
  EXPECT_EQ(nearest.leftOf(15), 4);
  EXPECT_EQ(nearest.rightOf(25), 0);
  EXPECT_EQ(nearest.leftOf(5), 0);
}

TEST_F(NearestItems, PlaceThatIsNoNumberHasNoSides) {
  EXPECT_EQ(at({1, 2}).rightOf(notANumber), 0);
  EXPECT_EQ(at({1, 2}).leftOf(notANumber), 0);
}

TEST_F(NearestItems, InfiniteDistanceIsTooFar) {
  EXPECT_EQ(at({infinity}).rightOf(5), 0);
  EXPECT_EQ(at({infinity, -infinity}).rightOf(-infinity), 0);
  EXPECT_EQ(at({infinity, -infinity}).leftOf(infinity), 0);
  EXPECT_EQ(at({-infinity}).leftOf(5), 0);
  EXPECT_EQ(at({infinity, 7}).rightOf(5), 2);
  EXPECT_EQ(at({-infinity, 3}).leftOf(5), 2);
}

TEST_F(NearestItems, WithoutItemsThereIsNone) {
  EXPECT_EQ(at({}).rightOf(5), 0);
  EXPECT_EQ(at({}).leftOf(5), 0);
}

TEST_F(NearestItems, OnlyItemsAddedCount) {
  FakeHost host;
  items = tableOf(host, "note 1 at 10\nnote 2 at 5\nnote 1 at 30\nnote 2 at 20\n");
  NearestItem nearest;
  nearest.add(items, 1);
  nearest.add(items, 3);
  nearest.sort();
  EXPECT_EQ(nearest.rightOf(0), 1);
  EXPECT_EQ(nearest.rightOf(10), 3);
  EXPECT_EQ(nearest.leftOf(30), 1);
  EXPECT_EQ(nearest.leftOf(10), 0);
}

// --- compared with a reference implementation: a running best that only a smaller distance replaces ---

int referenceRightOf(const ItemTable& items, float x) {
  float best = 999;
  int found = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    const float distance = items.itemPar(i, 3) - x;
    if (items.itemPar(i, 3) > x && distance < best) {
      best = distance;
      found = i;
    }
  }
  return found;
}

int referenceLeftOf(const ItemTable& items, float x) {
  float best = 999;
  int found = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    const float distance = x - items.itemPar(i, 3);
    if (items.itemPar(i, 3) < x && distance < best) {
      best = distance;
      found = i;
    }
  }
  return found;
}

TEST_F(NearestItems, AnyPositionsGiveWhatTheRuleSays) {
  const std::vector<float> places = {0,           -0.0F,  1,           1.0000001F, 1.0000002F, 2,         5,
                                     -500,        -1,     -1.0000001F, 500,        998,        999,       1000,
                                     999.99994F,  -998,   -999,        5000,       infinity,   -infinity, notANumber,
                                     0.99999994F, 1e-45F, -1e-45F,     3e38F,      -3e38F};
  RandomGenerator random(54);
  for (int round = 0; round < 1000; ++round) {
    std::vector<float> positions;
    for (std::uint32_t count = random.below(12); count > 0; --count) {
      positions.push_back(places[random.below(places.size())]);
    }
    const NearestItem nearest = at(positions);
    for (const float x : places) {
      ASSERT_EQ(nearest.rightOf(x), referenceRightOf(items, x)) << "of " << exactNumber(x) << " in\n" << asText(items);
      ASSERT_EQ(nearest.leftOf(x), referenceLeftOf(items, x)) << "of " << exactNumber(x) << " in\n" << asText(items);
    }
  }
}

}  // namespace
}  // namespace kiv::test
