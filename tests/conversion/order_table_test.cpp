#include "conversion/order_table.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <vector>

#include <gtest/gtest.h>

#include "conversion/set_staff_attributes.h"
#include "tests/conversion/order_table_fixture.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

// --- the places ---

TEST_F(OrderTableTest, InstrumentsHaveTheirPositionsInTheOrderGiven) {
  convert({104, 0, -7, 101});
  EXPECT_EQ(instruments(), (Instruments{104, 0, -7, 101}));
  EXPECT_EQ(order.find(104), 1);
  EXPECT_EQ(order.find(0), 2);
  EXPECT_EQ(order.find(-0.0F), 2);
  EXPECT_EQ(order.find(-7), 3);
  EXPECT_EQ(order.find(101), 4);
  EXPECT_EQ(order.find(7), 0);
}

TEST_F(OrderTableTest, IdentifierThatIsNoWholeNumberOf16BitsHasNoPlace) {
  convert({2, 0, 32767, -32768});
  for (const float identifier : {2.5F, 1.5F, 1.9999999F, 32767.5F, 32768.0F, -32769.0F, 65538.0F, 1e30F, infinity,
                                 -infinity, notANumber, 1e-45F}) {
    EXPECT_EQ(order.find(identifier), 0) << identifier;
  }
  EXPECT_EQ(order.find(32767), 3);
  EXPECT_EQ(order.find(-32768), 4);
}

TEST_F(OrderTableTest, NewTableIsEmpty) {
  EXPECT_EQ(order.count(), 0);
  EXPECT_EQ(order.find(0), 0);
}

TEST_F(OrderTableTest, PositionsOfNewInstrumentsAreZeroInAllElse) {
  convert({7, 8});
  EXPECT_EQ(order.entry(1), unknown(7));
  EXPECT_EQ(order.entry(2), unknown(8));
}

TEST_F(OrderTableTest, PlaceBeyond16BitsIsARunTimeError) {
  Instruments all;
  for (int instr = -1; instr > -32768; --instr) {
    all.push_back(static_cast<std::int16_t>(instr));
  }
  convert(all);
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(order.count(), 32767);
  EXPECT_EQ(order.find(-32767), 32767);
  all.push_back(5);
  convert(all);
  EXPECT_EQ(end, 1);
  ASSERT_EQ(host.messages.size(), 1U);
  EXPECT_EQ(host.messages[0].icon, Icon::critical);
  EXPECT_TRUE(host.messages[0].text.starts_with("Run-time error: Overflow\r\n")) << host.messages[0].text;
}

// --- columns that outlive a run ---

TEST_F(OrderTableTest, SecondConversionReplacesOnlyTheIdentifiers) {
  convert({1, 2});
  order.entry(1) = filled(1, 1001);
  order.entry(2) = filled(2, 2001);
  convert({8, 9});
  EXPECT_EQ(order.entry(1), filled(8, 1001)) << "they belong to the place, not to the instrument";
  EXPECT_EQ(order.entry(2), filled(9, 2001));
}

TEST_F(OrderTableTest, ColumnsStayWithTheirPositionsWhenTheOrderChanges) {
  convert({1, 2, 3});
  for (int k = 1; k <= 3; ++k) {
    order.entry(k) = filled(order.entry(k).instr, 100.0F * static_cast<float>(k));
  }
  convert({3, 1, 2});
  EXPECT_EQ(order.entry(1), filled(3, 100));
  EXPECT_EQ(order.entry(2), filled(1, 200));
  EXPECT_EQ(order.entry(3), filled(2, 300));
  EXPECT_EQ(setDetailPar7(order, 3), 101);
  EXPECT_EQ(setDetailPar7(order, 2), 301);
}

TEST_F(OrderTableTest, LongerOrderHasZerosOnlyAfterTheOldEnd) {
  convert({1});
  order.entry(1) = filled(1, 1001);
  convert({4, 5, 6});
  EXPECT_EQ(order.entry(1), filled(4, 1001));
  EXPECT_EQ(order.entry(2), unknown(5));
  EXPECT_EQ(order.entry(3), unknown(6));
}

TEST_F(OrderTableTest, ColumnsBeyondAShorterOrderAreThereForALongerOne) {
  convert({1, 2, 3});
  order.entry(2) = filled(2, 2001);
  order.entry(3) = filled(3, 3001);
  convert({7});
  EXPECT_EQ(order.count(), 1);
  convert({});
  EXPECT_EQ(order.count(), 0);
  convert({4, 5, 6, 7});
  EXPECT_EQ(order.entry(1), unknown(4));
  EXPECT_EQ(order.entry(2), filled(5, 2001));
  EXPECT_EQ(order.entry(3), filled(6, 3001));
  EXPECT_EQ(order.entry(4), unknown(7));
}

TEST_F(OrderTableTest, InstrumentsOfAnEarlierRunAreNotFound) {
  convert({1, 2, 3});
  order.entry(3) = filled(3, 3001);
  convert({2});
  EXPECT_EQ(order.find(1), 0);
  EXPECT_EQ(order.find(2), 1);
  EXPECT_EQ(order.find(3), 0);
  EXPECT_EQ(setDetailPar5(order, 3), 0) << "its columns are kept, its identifier is not";
  EXPECT_EQ(setDetailKey(order, 3), 0);
}

TEST_F(OrderTableTest, SecondRunKeepsSizesAndRefreshesClefKeyAndTime) {
  convert({101});
  setStaffAttributes(tableOf(host,
                             "staff 1 at 0 size 1 lines 5 instrument 101 p11 3\nclef 1 at 2 height 1 kind 2\n"
                             "keysignature 1 at 9 key 3 type 4\ntimesignature 1 at 12 upper 6 lower 8\n"),
                     order);
  convert({101});
  setStaffAttributes(tableOf(host,
                             "staff 1 at 0 size 2 lines 1 instrument 101 p11 4\nclef 1 at 2 height 5 kind 6\n"
                             "keysignature 1 at 9 key 7 type 8\ntimesignature 1 at 12 upper 3 lower 2\n"),
                     order);
  EXPECT_EQ(order.entry(1), (OrderEntry{101, 0, MarkedValue(1), 5, 3, MarkedValue(6), 5, 7, 8, 3, 2}));
}

// --- what a rest staff copies ---

TEST_F(OrderTableTest, EveryColumnHasItsLookup) {
  convert({5, 6, 7});
  order.entry(1) = filled(5, 1100);
  order.entry(2) = filled(6, 1200);
  order.entry(3) = filled(7, 1300);
  EXPECT_EQ(setDetailPar5(order, 6), 200);
  EXPECT_EQ(setDetailPar7(order, 6), 1201);
  EXPECT_EQ(setDetailPar11(order, 6), 1202);
  EXPECT_EQ(setDetailKey(order, 6), 1205);
  EXPECT_EQ(setDetailKeyType(order, 6), 1206);
  EXPECT_EQ(setDetailTime(order, 6), 1207.0F / (1208.0F / 4));
}

TEST_F(OrderTableTest, LookupsOfAnUnknownInstrumentAreZero) {
  convert({5});
  order.entry(1) = filled(5, 1100);
  const FirstClefTable firstClefs;
  for (const std::int16_t instr : Instruments{0, 1, 6, -5}) {
    EXPECT_EQ(setDetailPar5(order, instr), 0);
    EXPECT_EQ(setDetailPar7(order, instr), 0);
    EXPECT_EQ(setDetailPar11(order, instr), 0);
    EXPECT_EQ(setDetailBarline(order, instr), 0);
    EXPECT_EQ(setDetailClef(firstClefs, instr), MarkedValue());
    EXPECT_EQ(setDetailClefHite(firstClefs, instr), 0);
    EXPECT_EQ(setDetailKey(order, instr), 0);
    EXPECT_EQ(setDetailKeyType(order, instr), 0);
    EXPECT_EQ(setDetailRestHite(order, instr), 0);
    EXPECT_EQ(endOf(host, [&] { EXPECT_EQ(setDetailTime(order, instr), 0); }), std::nullopt);
  }
}

TEST_F(OrderTableTest, SizeFrom1000OnHasItsMarkerRemoved) {
  convert({5});
  const std::map<float, float> sizes = {{1000, 0},    {1001, 1}, {1000.5F, 0.5F},
                                        {2500, 1500}, {0, 0},    {999.9375F, 999.9375F},
                                        {995, 995},   {-4, -4},  {3, 3}};
  for (const auto& [sum, size] : sizes) {
    order.entry(1).size = stored(sum);
    EXPECT_EQ(setDetailPar5(order, 5), size) << sum;
  }
  order.entry(1).size = MarkedValue(notANumber);
  EXPECT_TRUE(std::isnan(setDetailPar5(order, 5)));
}

TEST_F(OrderTableTest, BarlineCodeAndRestHeightFollowTheNumberOfLines) {
  struct Codes {
    float lines;
    float barline;
    float restHeight;
  };
  convert({5});
  for (const Codes& codes :
       {Codes{0, 0, 0}, Codes{1, 1, -8}, Codes{2, 5, -4}, Codes{3, 7, -4}, Codes{4, 9, -2}, Codes{5, 0, 0},
        Codes{6, 13, 0}, Codes{7, 0, 0}, Codes{-1, 0, 0}, Codes{0.5F, 0, 0}, Codes{1.5F, 0, 0}, Codes{2.5F, 0, 0},
        Codes{3.5F, 0, 0}, Codes{4.5F, 0, 0}, Codes{5.5F, 0, 0}, Codes{6.5F, 0, 0}, Codes{notANumber, 0, 0}}) {
    order.entry(1).lines = codes.lines;
    EXPECT_EQ(setDetailBarline(order, 5), codes.barline) << codes.lines;
    EXPECT_EQ(setDetailRestHite(order, 5), codes.restHeight) << codes.lines;
  }
}

// --- compared with columns that are kept by hand ---

TEST_F(OrderTableTest, AnyRowOfConversionsFindsAndKeepsAsTheRulesSay) {
  RandomGenerator random(53);
  std::vector<float> lines;
  for (int run = 0; run < 300; ++run) {
    Instruments distinct;
    for (std::uint32_t wanted = random.below(9); wanted > 0; --wanted) {
      const auto instr = static_cast<std::int16_t>(random.below(20));
      bool known = false;
      for (const std::int16_t other : distinct) {
        known = known || other == instr;
      }
      if (!known) {
        distinct.push_back(instr);
      }
    }
    lines.resize(std::max(lines.size(), distinct.size()));
    convert(distinct);
    ASSERT_EQ(instruments(), distinct);
    for (std::int16_t instr = 0; instr < 20; ++instr) {
      std::size_t k = 0;
      while (k < distinct.size() && distinct[k] != instr) {
        ++k;
      }
      const bool found = k < distinct.size();
      ASSERT_EQ(order.find(instr), found ? static_cast<int>(k) + 1 : 0);
      ASSERT_EQ(setDetailPar7(order, instr), found ? lines[k] : 0);
    }
    for (std::size_t k = 0; k < distinct.size(); ++k) {
      if (random.oneIn(2)) {
        lines[k] = static_cast<float>(run + 1);
        order.entry(static_cast<int>(k) + 1).lines = lines[k];
      }
    }
  }
}

}  // namespace
}  // namespace kiv::test
