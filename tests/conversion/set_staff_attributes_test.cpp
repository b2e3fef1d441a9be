#include "conversion/set_staff_attributes.h"

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <utility>
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

/// What the table knows of an instrument: every column that is not 0.
std::string known(const OrderEntry& entry) {
  const std::pair<const char*, float> columns[] = {
      {"size", entry.size},     {"lines", entry.lines},    {"par11", entry.par11}, {"clef", entry.clef},
      {"hite", entry.hite},     {"key", entry.key},        {"type", entry.type},   {"timeUp", entry.timeUp},
      {"timeDn", entry.timeDn}, {"present", entry.present}};
  std::string text = std::to_string(entry.instr) + ":";
  for (const auto& [name, value] : columns) {
    if (value != 0) {
      text += std::string(" ") + name + " " + exactNumber(value);
    }
  }
  return text;
}

/// Systems of a conversion, and what its table of instruments takes over from them.
class SetStaffAttributes : public ::testing::Test {
 protected:
  SetStaffAttributes() { setInstrumentOrder(host, {101, 102, 103}, order); }

  void take(std::string_view system) { setStaffAttributes(tableOf(host, system), order); }
  std::string of(std::int16_t instr) const { return known(order.entry(order.find(instr))); }
  /// What a system gives to instrument 101 in a new table.
  std::string taken(std::string_view system) {
    order = {};
    setInstrumentOrder(host, {101, 102, 103}, order);
    take(system);
    return of(101);
  }

  FakeHost host;
  OrderTable order;
};

// --- size, lines, P11 ---

TEST_F(SetStaffAttributes, StaffGivesSizeLinesAndP11) {
  EXPECT_EQ(taken("staff 1 at 0 p4 9 size 0.5 p6 8 lines 5 p8 7 instrument 101 p10 6 p11 2 p12 4\n"),
            "101: size 1000.5 lines 5 par11 2");
}

TEST_F(SetStaffAttributes, SizeZeroIsStoredAs1000AndReadBackAsZero) {
  take("staff 1 at 0 lines 1 instrument 101\n");
  EXPECT_EQ(of(101), "101: size 1000 lines 1");
  EXPECT_EQ(setDetailPar5(order, 101), 0);
}

TEST_F(SetStaffAttributes, FirstStaffOfTheInstrumentGivesThemForTheWholeRun) {
  take("staff 2 at 0 size 1 instrument 101\nstaff 1 at 0 size 2 lines 5 instrument 101 p11 2\n");
  take("staff 1 at 0 size 3 lines 4 instrument 101 p11 3\nstaff 2 at 0 size 4 lines 3 instrument 102\n");
  EXPECT_EQ(of(101), "101: size 1001") << "lines and P11 of 0 are known as well";
  EXPECT_EQ(of(102), "102: size 1004 lines 3");
  EXPECT_EQ(of(103), "103:");
}

TEST_F(SetStaffAttributes, SizeOfMinus1000IsAsGoodAsUnknown) {
  take("staff 1 at 0 size -1000 lines 4 instrument 101 p11 3\n");
  EXPECT_EQ(of(101), "101: lines 4 par11 3");
  take("staff 1 at 0 size -999 lines 5 instrument 101\nstaff 2 at 0 size 7 lines 6 instrument 101\n");
  EXPECT_EQ(of(101), "101: size 1 lines 5");
}

TEST_F(SetStaffAttributes, SizeBelowMinus1000IsKnown) {
  take("staff 1 at 0 size -1001 lines 4 instrument 101\n");
  take("staff 1 at 0 size 1 lines 5 instrument 101\n");
  EXPECT_EQ(of(101), "101: size -1 lines 4");
}

TEST_F(SetStaffAttributes, SizeThatIsNoNumberIsKnown) {
  take("staff 1 at 0 size 0x7FC00000 lines 4 instrument 101\n");
  take("staff 1 at 0 size 1 lines 5 instrument 101\n");
  EXPECT_EQ(of(101), "101: size 0x7FC00000 lines 4");
}

TEST_F(SetStaffAttributes, MarkerIsAddedInSinglePrecision) {
  take("staff 1 at 0 size 0.7 instrument 101\nclef 1 at 2 kind 0.3\n");
  EXPECT_EQ(order.entry(1).size, 0.7F + 1000.0F);
  EXPECT_EQ(order.entry(1).clef, 0.3F + 1000.0F);
}

// --- clef, key, time ---

TEST_F(SetStaffAttributes, ClefKeyAndTimeOfTheStaffAreTaken) {
  EXPECT_EQ(taken("staff 1 at 0 instrument 101\nclef 1 at 2 height -3 kind 2\nkeysignature 1 at 9 key 3 type 4\n"
                  "timesignature 1 at 12 upper 6 lower 8\n"),
            "101: size 1000 clef 1002 hite -3 key 3 type 4 timeUp 6 timeDn 8");
}

TEST_F(SetStaffAttributes, ClefOfKindZeroIsStoredAs1000) {
  EXPECT_EQ(taken("staff 1 at 0 instrument 101\nclef 1 at 2\n"), "101: size 1000 clef 1000");
}

TEST_F(SetStaffAttributes, RightmostOfEachCountsWhereverItStandsAmongTheItems) {
  EXPECT_EQ(taken("timesignature 1 at 90 upper 1 lower 2\nkeysignature 1 at 80 key 1 type 2\nclef 1 at 70 kind 1\n"
                  "clef 1 at 5 kind 2\nkeysignature 1 at 5 key 3 type 4\ntimesignature 1 at 5 upper 3 lower 4\n"
                  "staff 1 at 0 instrument 101\n"),
            "101: size 1000 clef 1001 key 1 type 2 timeUp 1 timeDn 2");
}

TEST_F(SetStaffAttributes, EachIsSoughtFromItsOwnLeft) {
  EXPECT_EQ(taken("staff 1 at 0 instrument 101\nclef 1 at 70 kind 1\nkeysignature 1 at 30 key 1\n"
                  "timesignature 1 at -5 upper 3\n"),
            "101: size 1000 clef 1001 key 1 timeUp 3");
}

TEST_F(SetStaffAttributes, FirstOfSeveralAtOnePositionCounts) {
  EXPECT_EQ(taken("staff 1 at 0 instrument 101\nclef 1 at 9 kind 1\nclef 1 at 9 kind 2\nkeysignature 1 at 9 key 1\n"
                  "keysignature 1 at 9 key 2\ntimesignature 1 at 9 upper 1\ntimesignature 1 at 9 upper 2\n"),
            "101: size 1000 clef 1001 key 1 timeUp 1");
}

TEST_F(SetStaffAttributes, PositionMustBeGreaterThanMinus9999) {
  const std::string staff = "staff 1 at 0 instrument 101\n";
  for (const char* position : {"-9999", "-9999.001", "-10000", "0xFF800000", "0x7FC00000"}) {
    EXPECT_EQ(taken(staff + "clef 1 at " + position + " kind 1\nkeysignature 1 at " + position +
                    " key 1\ntimesignature 1 at " + position + " upper 1\n"),
              "101: size 1000")
        << position;
  }
  for (const char* position : {"-9998.999", "0x7F800000"}) {
    EXPECT_EQ(taken(staff + "clef 1 at " + position + " kind 1\nkeysignature 1 at " + position +
                    " key 1\ntimesignature 1 at " + position + " upper 1\n"),
              "101: size 1000 clef 1001 key 1 timeUp 1")
        << position;
  }
}

TEST_F(SetStaffAttributes, PositionThatIsNoNumberDoesNotHideTheOthers) {
  EXPECT_EQ(taken("staff 1 at 0 instrument 101\nclef 1 at 5 kind 1\nclef 1 at 0x7FC00000 kind 2\nclef 1 at 6 kind 3\n"),
            "101: size 1000 clef 1003");
}

TEST_F(SetStaffAttributes, ItemsOfOtherStavesDoNotCount) {
  take(
      "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\nclef 2 at 90 kind 2\nclef 1 at 5 kind 1\n"
      "clef 1.5 at 95 kind 3\nkeysignature 2 at 5 key 7\ntimesignature 3 at 5 upper 3\nclef 0 at 5\n");
  EXPECT_EQ(of(101), "101: size 1000 clef 1001");
  EXPECT_EQ(of(102), "102: size 1000 clef 1002 key 7");
}

TEST_F(SetStaffAttributes, StaffZeroIsOneWhateverItsSign) {
  EXPECT_EQ(taken("staff -0 at 0 instrument 101\nclef 0 at 5 kind 1\n"), "101: size 1000 clef 1001");
}

TEST_F(SetStaffAttributes, OtherItemsDoNotCount) {
  EXPECT_EQ(taken("staff 1 at 0 instrument 101\nnote 1 at 90 height 4 p5 5\nrest 1 at 90 height 4 kind 5\n"
                  "barline 1 at 90 spans 4 kind 5\nitem 4 1 90 4 5 6\nitem 10 1 90 4 5 6\n"),
            "101: size 1000");
}

TEST_F(SetStaffAttributes, EverySystemOverwritesThem) {
  take(
      "staff 1 at 0 instrument 101\nclef 1 at 90 height 5 kind 1\nkeysignature 1 at 90 key 3 type 2\n"
      "timesignature 1 at 90 upper 3 lower 4\n");
  take("staff 2 at 0 instrument 101\nclef 2 at 2 kind 2\nkeysignature 2 at 4\ntimesignature 2 at 6 upper 98\n");
  EXPECT_EQ(of(101), "101: size 1000 clef 1002 timeUp 98") << "zeros too, and however far to the left";
}

TEST_F(SetStaffAttributes, SystemWithoutThemLeavesThem) {
  const std::string before = taken(
      "staff 1 at 0 instrument 101\nclef 1 at 90 height 5 kind 1\nkeysignature 1 at 90 key 3 type 2\n"
      "timesignature 1 at 90 upper 3 lower 4\n");
  take(
      "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\nclef 2 at 2 kind 2\nkeysignature 2 at 4 key 1\n"
      "timesignature 2 at 6 upper 6 lower 8\n");
  EXPECT_EQ(of(101), before);
  take("staff 1 at 0 instrument 101\nkeysignature 1 at 4 key 7\n");
  EXPECT_EQ(of(101), "101: size 1000 clef 1001 hite 5 key 7 timeUp 3 timeDn 4") << "each of its own";
}

TEST_F(SetStaffAttributes, SystemWithoutTheInstrumentLeavesIt) {
  const std::string before = taken("staff 1 at 0 size 2 instrument 101\nclef 1 at 90 kind 1\n");
  take("staff 1 at 0 size 3 instrument 102\nclef 1 at 95 kind 2\n");
  EXPECT_EQ(of(101), before);
}

// --- several staves ---

TEST_F(SetStaffAttributes, LaterOfTwoStavesOfAnInstrumentCountsForWhatItHas) {
  EXPECT_EQ(taken("staff 2 at 0 size 1 instrument 101\nstaff 1 at 0 size 2 instrument 101\nclef 1 at 2 kind 1\n"
                  "clef 2 at 90 kind 2\nkeysignature 2 at 9 key 5\n"),
            "101: size 1001 clef 1001 key 5");
}

TEST_F(SetStaffAttributes, StavesOfOneNumberHaveTheSameClef) {
  take("staff 1 at 0 instrument 101\nstaff 1 at 0 instrument 102\nclef 1 at 2 kind 1\n");
  EXPECT_EQ(of(101), "101: size 1000 clef 1001");
  EXPECT_EQ(of(102), "102: size 1000 clef 1001");
}

TEST_F(SetStaffAttributes, StaffOfAnInstrumentWithoutAPlaceGivesNothing) {
  take(
      "staff 1 at 0 size 1 instrument 102\nstaff 2 at 0 size 2 instrument 7\nclef 2 at 2 kind 2\n"
      "staff 3 at 0 size 3 instrument -101\nclef 3 at 2 kind 3\nstaff 4 at 0 size 4 instrument 101.5\n"
      "clef 4 at 2 kind 4\nstaff 5 at 0 size 5 instrument 0x7FC00000\nstaff 6 at 0 size 6 instrument 1e9\n"
      "clef 6 at 9 kind 5\nstaff 7 at 0 size 7\n");
  EXPECT_EQ(of(101), "101:");
  EXPECT_EQ(of(102), "102: size 1001");
  EXPECT_EQ(of(103), "103:");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(SetStaffAttributes, HiddenStaffCounts) {
  EXPECT_EQ(taken("staff 1 at 0 size 1 lines -1 instrument 101\nclef 1 at 2 kind 1\n"),
            "101: size 1001 lines -1 clef 1001");
}

TEST_F(SetStaffAttributes, OnlyItemsOfExactlyTheTypeCount) {
  ItemTable items = tableOf(host,
                            "staff 1 at 0 instrument 101\nclef 1 at 2 kind 1\nkeysignature 1 at 2 key 1\n"
                            "timesignature 1 at 2 upper 1\nstaff 1 at 0 size 2 instrument 102\n");
  items.itemPar(2, par::type) = 3.25F;
  items.itemPar(3, par::type) = 17.25F;
  items.itemPar(4, par::type) = type::deleted;
  items.itemPar(5, par::type) = 8.25F;
  setStaffAttributes(items, order);
  EXPECT_EQ(of(101), "101: size 1000");
  EXPECT_EQ(of(102), "102:");
}

TEST_F(SetStaffAttributes, RowsBehindTheTableDoNotCount) {
  ItemTable items = tableOf(host, "staff 1 at 0 instrument 101\nclef 1 at 2 kind 1\nstaff 2 at 0 instrument 102\n");
  items.restart();
  setStaffAttributes(items, order);
  EXPECT_EQ(of(101), "101:");
  items.store_item(host, {{0, type::staff, 1, 0, 0, 0, 0, 0, 0, 101}, ""});
  setStaffAttributes(items, order);
  EXPECT_EQ(of(101), "101: size 1000");
  EXPECT_EQ(of(102), "102:");
}

TEST_F(SetStaffAttributes, FullTableCountsUpToItsLastItem) {
  ItemTable items;
  for (int i = 1; i < itemLimit; ++i) {
    items.store_item(host, {{0, type::note, 1}, ""});
  }
  items.itemPar(1, par::type) = type::staff;
  items.itemPar(1, par::instrument) = 101;
  ItemTable other = items;
  items.store_item(host, {{0, type::clef, 1, 5, 0, 2}, ""});
  setStaffAttributes(items, order);
  EXPECT_EQ(of(101), "101: size 1000 clef 1002");
  other.store_item(host, {{0, type::staff, 1, 0, 0, 3, 0, 0, 0, 103}, ""});
  setStaffAttributes(other, order);
  EXPECT_EQ(of(103), "103: size 1003");
}

TEST_F(SetStaffAttributes, PresenceIsLeftAlone) {
  order.entry(1).present = 3;
  take("staff 1 at 0 instrument 101\n");
  EXPECT_EQ(of(101), "101: size 1000 present 3");
}

// --- against the rules as they are put: a scan of the items for every staff ---

/// The item of a type on a staff that ends the scan as the best, 0 when there is none.
int plainScan(const ItemTable& items, float type, float staff) {
  float best = -9999;
  int found = 0;
  for (int j = 1; j <= items.itemCount(); ++j) {
    if (items.itemPar(j, 1) == type && items.itemPar(j, 2) == staff && items.itemPar(j, 3) > best) {
      best = items.itemPar(j, 3);
      found = j;
    }
  }
  return found;
}

void plainSetStaffAttributes(const ItemTable& items, OrderTable& order) {
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
    if (entry.size == 0) {
      entry.size = items.itemPar(i, 5) + 1000;
      entry.lines = items.itemPar(i, 7);
      entry.par11 = items.itemPar(i, 11);
    }
    if (const int j = plainScan(items, 3, items.itemPar(i, 2)); j != 0) {
      entry.clef = items.itemPar(j, 5) + 1000;
      entry.hite = items.itemPar(j, 4);
    }
    if (const int j = plainScan(items, 17, items.itemPar(i, 2)); j != 0) {
      entry.key = items.itemPar(j, 5);
      entry.type = items.itemPar(j, 6);
    }
    if (const int j = plainScan(items, 18, items.itemPar(i, 2)); j != 0) {
      entry.timeUp = items.itemPar(j, 5);
      entry.timeDn = items.itemPar(j, 6);
    }
  }
}

Item randomItem(Dice& dice) {
  const float types[] = {type::staff, type::clef, type::keySignature, type::timeSignature, type::note};
  const float positions[] = {-10000, -9999, -9998, -1, 0, 5, 5, 90, infinity, notANumber};
  const float instruments[] = {101, 101, 102, 103, 102.5F, 7, -101, notANumber};
  const float sizes[] = {0, 1, 2.5F, -1000, -1500};
  Item item;
  item.par = {0,
              types[dice.below(std::size(types))],
              static_cast<float>(dice.below(4)),
              positions[dice.below(std::size(positions))],
              static_cast<float>(dice.below(100)),
              sizes[dice.below(std::size(sizes))],
              static_cast<float>(dice.below(100)),
              static_cast<float>(dice.below(7))};
  item.par[par::instrument] = instruments[dice.below(std::size(instruments))];
  item.par[par::par11] = static_cast<float>(dice.below(100));
  return item;
}

TEST_F(SetStaffAttributes, AnySystemsGiveWhatTheRulesSay) {
  Dice dice(57);
  OrderTable plain = order;
  for (int round = 0; round < 400; ++round) {
    if (round % 20 == 0) {
      order = {};
      setInstrumentOrder(host, {101, 102, 103}, order);
      plain = order;
    }
    ItemTable items;
    for (std::uint32_t count = dice.below(25); count > 0; --count) {
      items.store_item(host, randomItem(dice));
    }
    setStaffAttributes(items, order);
    plainSetStaffAttributes(items, plain);
    for (int k = 1; k <= 3; ++k) {
      ASSERT_EQ(known(order.entry(k)), known(plain.entry(k))) << asText(items);
    }
  }
}

}  // namespace
}  // namespace kiv::test
