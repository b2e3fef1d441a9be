#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/number.h"
#include "tests/conversion/set_rest_durations_fixture.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

// --- compared with a reference implementation: scans with a running best ---

constexpr float tooFar = 999;

int referenceBeat(const ItemTable& items, float staff, float x) {
  float best = tooFar;
  int found = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    const bool beat = items.itemPar(i, 1) == 1 || items.itemPar(i, 1) == 2;
    if (beat && items.itemPar(i, 2) == staff && items.itemPar(i, 3) > x && items.itemPar(i, 3) - x < best) {
      best = items.itemPar(i, 3) - x;
      found = i;
    }
  }
  return found;
}

int referenceTime(const ItemTable& items, float staff, float x) {
  float best = tooFar;
  int found = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.itemPar(i, 1) == 18 && items.itemPar(i, 2) == staff && items.itemPar(i, 3) < x &&
        x - items.itemPar(i, 3) < best) {
      best = x - items.itemPar(i, 3);
      found = i;
    }
  }
  return found;
}

int referenceStaff(const ItemTable& items, int p, float value) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.itemPar(i, 1) == 8 && items.itemPar(i, p) == value) {
      return i;
    }
  }
  return 0;
}

[[noreturn]] void endCritically(const std::string& text) {
  kiv::Message message;
  message.icon = Icon::critical;
  message.text = text;
  endProgram(message);
}

/// Upper and lower number in force before the beat, with the codes resolved.
std::pair<float, float> referenceSignature(const ItemTable& items, float staff, float x, const OrderTable& order) {
  float upper = 0;
  float lower = 0;
  if (const int time = referenceTime(items, staff, x); time != 0) {
    upper = items.itemPar(time, 5);
    lower = items.itemPar(time, 6);
  } else {
    int k = 1;
    while (k <= order.count() && order.entry(k).timeUp == 0) {
      ++k;
    }
    if (k > order.count()) {
      endCritically("Logical error 4 in setRestDurations");
    }
    upper = order.entry(k).timeUp;
    lower = order.entry(k).timeDn;
  }
  if (upper == 99) {
    return {4.0F, 4.0F};
  }
  return upper == 98 ? std::pair{2.0F, 2.0F} : std::pair{upper, lower};
}

void referenceSetRestDurations(ItemTable& items, const OrderTable& order, const BarlineList& barlines) {
  const int rest = referenceStaff(items, 9, 102);
  if (rest == 0) {
    endCritically("Logical error 1 in setRestDurations");
  }
  const int reference = referenceStaff(items, 20, 0);
  if (reference == 0) {
    endCritically("Logical error 2 in setRestDurations");
  }
  const float staff = items.itemPar(rest, 2);
  for (std::size_t b = 1; b < barlines.size(); ++b) {
    const int beat = referenceBeat(items, items.itemPar(reference, 2), barlines[b - 1].position);
    if (beat == 0) {
      endCritically("Logical error 3 in setRestDurations");
    }
    const float x = items.itemPar(beat, 3);
    const auto [upper, lower] = referenceSignature(items, staff, x, order);
    if (upper == 0 || lower == 0) {
      endCritically(unhandled(generalNumber(upper) + "/" + generalNumber(lower)));
    }
    items.store_item(itemOf({2, staff, x, 0, -2, 0, upper / lower * 4, 0, -1}));
  }
  items.itemPar(rest, 20) = 0;
}

using Choice = std::vector<float>;

/// Staves and up to 16 other items of two numbers, in any order. Many systems lack what is sought.
std::vector<Item> randomSystem(RandomGenerator& random) {
  const Choice types = {1, 1, 1, 2, 18, 18, 3};
  const Choice positions = {-995, -490, 0, 5, 5, 10, 10.000001F, 20, 60, 60.000004F, 110, 1004};
  const Choice uppers = {4, 3, 6, 99, 98, 2, 7};
  const auto any = [&](const Choice& choice) { return choice[random.below(choice.size())]; };
  const auto anyStaff = [&] { return static_cast<float>(1 + random.below(2)); };
  std::vector<Item> items;
  for (const float instrument : {101.0F, 102.0F, 102.0F, 103.0F}) {
    if (!random.oneIn(4)) {
      items.push_back(itemOf({8, anyStaff(), 0, 0, 0, 0, 0, 0, instrument}));
      items.back()[20] = instrument == 102 || random.oneIn(2) ? 1.0F : 0.0F;
    }
  }
  for (std::uint32_t count = random.below(17); count > 0; --count) {
    const float upper = random.oneIn(20) ? 0.0F : any(uppers);
    const float lower = random.oneIn(20) ? 0.0F : 4.0F;
    items.push_back(itemOf({any(types), anyStaff(), any(positions), 0, upper, lower}));
  }
  for (std::size_t n = items.size(); n > 1; --n) {
    std::swap(items[n - 1], items[random.below(n)]);
  }
  return items;
}

TEST_F(SetRestDurations, AnySystemsGiveWhatTheRulesSay) {
  const Choice places = {-994, -490, 0, 5, 10, 50, 60, 100};
  RandomGenerator random(54);
  ItemTable expected;
  int filled = 0;
  for (int round = 0; round < 600; ++round) {
    setTime(1, 0, 4);
    setTime(2, random.oneIn(3) ? 0.0F : 5.0F, 8);
    BarlineList barlines;
    for (std::uint32_t count = random.below(5); count > 0; --count) {
      barlines.push_back({places[random.below(places.size())], 0});
    }
    items.clear();
    expected.clear();
    for (const Item& item : randomSystem(random)) {
      items.store_item(item);
      expected.store_item(item);
    }
    const std::string system = asText(items);
    FakeHost referenceHost;
    host.messages.clear();
    end = endOf(host, [&] { setRestDurations(items, 102, order, barlines); });
    ASSERT_EQ(end, endOf(referenceHost, [&] { referenceSetRestDurations(expected, order, barlines); })) << system;
    ASSERT_EQ(host.messages, referenceHost.messages) << system;
    ASSERT_EQ(asText(items), asText(expected)) << "of\n" << system;
    filled += !end && barlines.size() > 1 ? 1 : 0;
  }
  EXPECT_GT(filled, 50);
}

}  // namespace
}  // namespace kiv::test
