#include "conversion/order_table.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "analysis/read_bar_data.h"
#include "conversion/set_staff_attributes.h"
#include "mus/reader.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv {

void PrintTo(const OrderEntry& entry, std::ostream* out) {
  *out << entry.instr << ": present " << entry.present << " size " << entry.size << " lines " << entry.lines
       << " par11 " << entry.par11 << " clef " << entry.clef << " hite " << entry.hite << " key " << entry.key
       << " type " << entry.type << " time " << entry.timeUp << "/" << entry.timeDn;
}

}  // namespace kiv

namespace kiv::test {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

using Instruments = std::vector<std::int16_t>;

class OrderTableTest : public ::testing::Test {
 protected:
  /// The order of a conversion over a report of these instruments.
  void convert(const Instruments& instruments) {
    end = endOf([&] { setInstrumentOrder(host, instruments, order); });
  }
  Instruments instruments() const {
    Instruments found;
    for (int k = 1; k <= order.count(); ++k) {
      found.push_back(order.entry(k).instr);
    }
    return found;
  }
  /// An entry that has a value of its own in every column but the identifier.
  static OrderEntry filled(std::int16_t instr, float value) {
    return {instr, 3, value, value + 1, value + 2, value + 3, value + 4, value + 5, value + 6, value + 7, value + 8};
  }

  FakeHost host;
  OrderTable order;
  std::optional<int> end;
};

// --- the places ---

TEST_F(OrderTableTest, InstrumentsHaveTheirPlacesInTheOrderGiven) {
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

TEST_F(OrderTableTest, PlacesOfNewInstrumentsAreZeroInAllElse) {
  convert({7, 8});
  EXPECT_EQ(order.entry(1), OrderEntry{7});
  EXPECT_EQ(order.entry(2), OrderEntry{8});
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

TEST_F(OrderTableTest, SecondConversionMakesOnlyTheIdentifiersAnew) {
  convert({1, 2});
  order.entry(1) = filled(1, 1001);
  order.entry(2) = filled(2, 2001);
  convert({8, 9});
  EXPECT_EQ(order.entry(1), filled(8, 1001)) << "they belong to the place, not to the instrument";
  EXPECT_EQ(order.entry(2), filled(9, 2001));
}

TEST_F(OrderTableTest, ColumnsStayWithTheirPlacesWhenTheOrderChanges) {
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

TEST_F(OrderTableTest, LongerOrderHasZerosOnlyBehindTheOldEnd) {
  convert({1});
  order.entry(1) = filled(1, 1001);
  convert({4, 5, 6});
  EXPECT_EQ(order.entry(1), filled(4, 1001));
  EXPECT_EQ(order.entry(2), OrderEntry{5});
  EXPECT_EQ(order.entry(3), OrderEntry{6});
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
  EXPECT_EQ(order.entry(1), OrderEntry{4});
  EXPECT_EQ(order.entry(2), filled(5, 2001));
  EXPECT_EQ(order.entry(3), filled(6, 3001));
  EXPECT_EQ(order.entry(4), OrderEntry{7});
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
  EXPECT_EQ(order.entry(1), (OrderEntry{101, 0, 1001, 5, 3, 1006, 5, 7, 8, 3, 2}));
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
  EXPECT_EQ(setDetailTime(host, order, 6), 1207.0F / (1208.0F / 4));
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
    EXPECT_EQ(setDetailClef(firstClefs, instr), 0);
    EXPECT_EQ(setDetailClefHite(firstClefs, instr), 0);
    EXPECT_EQ(setDetailKey(order, instr), 0);
    EXPECT_EQ(setDetailKeyType(order, instr), 0);
    EXPECT_EQ(setDetailRestHite(order, instr), 0);
    EXPECT_EQ(endOf([&] { EXPECT_EQ(setDetailTime(host, order, instr), 0); }), std::nullopt);
  }
}

TEST_F(OrderTableTest, SizeFrom1000OnHasItsMarkerTakenOff) {
  convert({5});
  const std::map<float, float> sizes = {{1000, 0},    {1001, 1}, {1000.5F, 0.5F},
                                        {2500, 1500}, {0, 0},    {999.9375F, 999.9375F},
                                        {995, 995},   {-4, -4},  {3, 3}};
  for (const auto& [stored, size] : sizes) {
    order.entry(1).size = stored;
    EXPECT_EQ(setDetailPar5(order, 5), size) << stored;
  }
  order.entry(1).size = notANumber;
  EXPECT_TRUE(std::isnan(setDetailPar5(order, 5)));
}

TEST_F(OrderTableTest, BarlineCodeAndRestHeightFollowTheNumberOfLines) {
  struct Codes {
    float lines;
    float barline;
    float restHite;
  };
  convert({5});
  for (const Codes& codes :
       {Codes{0, 0, 0}, Codes{1, 1, -8}, Codes{2, 5, -4}, Codes{3, 7, -4}, Codes{4, 9, -2}, Codes{5, 0, 0},
        Codes{6, 13, 0}, Codes{7, 0, 0}, Codes{-1, 0, 0}, Codes{0.5F, 0, 0}, Codes{1.5F, 0, 0}, Codes{2.5F, 0, 0},
        Codes{3.5F, 0, 0}, Codes{4.5F, 0, 0}, Codes{5.5F, 0, 0}, Codes{6.5F, 0, 0}, Codes{notANumber, 0, 0}}) {
    order.entry(1).lines = codes.lines;
    EXPECT_EQ(setDetailBarline(order, 5), codes.barline) << codes.lines;
    EXPECT_EQ(setDetailRestHite(order, 5), codes.restHite) << codes.lines;
  }
}

// --- the length of a bar ---

class BarLength : public OrderTableTest {
 protected:
  float of(float upper, float lower) {
    convert({5});
    order.entry(1).timeUp = upper;
    order.entry(1).timeDn = lower;
    float length = -1;
    host.messages.clear();
    end = endOf([&] { length = setDetailTime(host, order, 5); });
    return length;
  }
};

TEST_F(BarLength, IsUpperThroughLowerInQuarters) {
  EXPECT_EQ(of(6, 8), 3);
  EXPECT_EQ(of(3, 2), 6);
  EXPECT_EQ(of(3, 4), 3);
  EXPECT_EQ(of(3, 8), 1.5F);
  EXPECT_EQ(of(2, 2), 4);
  EXPECT_EQ(of(2, -4), -2);
  EXPECT_EQ(of(97, 4), 97);
  EXPECT_EQ(of(100, 4), 100);
  EXPECT_EQ(of(4.5F, 4), 4.5F);
  EXPECT_EQ(of(0, 4), 0);
}

TEST_F(BarLength, FourIsFourQuartersWhateverIsBelow) {
  EXPECT_EQ(of(4, 8), 4);
  EXPECT_EQ(of(4, 2), 4);
  EXPECT_EQ(of(4, 4), 4);
  EXPECT_EQ(of(4, 0), 4);
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(BarLength, CodesOfCommonTimeAndAllaBreveNeedNoLowerNumber) {
  EXPECT_EQ(of(99, 0), 4);
  EXPECT_EQ(of(99, 8), 4);
  EXPECT_EQ(of(98, 0), 2);
  EXPECT_EQ(of(98, 8), 2);
}

TEST_F(BarLength, RoundsEveryStepToASingle) {
  EXPECT_EQ(of(1, 3), 1.0F / (3.0F / 4.0F));
  EXPECT_EQ(of(3e38F, 3e38F), 3e38F / (3e38F / 4.0F));
}

TEST_F(BarLength, LowerNumberZeroDividesByZero) {
  for (const float upper : {3.0F, 0.0F, 1.0F, 4.5F, 98.5F, -4.0F}) {
    for (const float lower : {0.0F, -0.0F}) {
      of(upper, lower);
      EXPECT_EQ(end, 1) << upper;
      ASSERT_EQ(host.messages.size(), 1U);
      EXPECT_EQ(host.messages[0].icon, Icon::critical);
      EXPECT_TRUE(host.messages[0].text.starts_with("Run-time error: Division by zero\r\n")) << host.messages[0].text;
    }
  }
}

// --- the clefs, which the analysis found ---

class FirstClefLookup : public ::testing::Test {
 protected:
  /// Takes up the first clefs of a page.
  void analyze(std::string_view pageText) {
    host.addFile("C:\\M\\A1.MUS", page(pageText));
    items.restart();
    MusReader reader;
    readBarData(host, "C:\\M\\A1.MUS", 0, items, firstClefs, reader);
  }

  FakeHost host;
  ItemTable items;
  FirstClefTable firstClefs;
};

TEST_F(FirstClefLookup, KindKeepsItsMarkerAndHeightIsAsItIs) {
  analyze(
      "staff 1 at 0 instrument 101\nclef 1 at 2 height -3 kind 2\nstaff 2 at 0 instrument 102\n"
      "clef 2 at 2 height 1004 kind 0\n");
  EXPECT_EQ(setDetailClef(firstClefs, 101), 1002);
  EXPECT_EQ(setDetailClefHite(firstClefs, 101), -3);
  EXPECT_EQ(setDetailClef(firstClefs, 102), 1000);
  EXPECT_EQ(setDetailClefHite(firstClefs, 102), 1004);
}

TEST_F(FirstClefLookup, FirstOfSeveralEntriesOfAnIdentifierCounts) {
  // An identifier of 2.5 enters as 2 every time that it is met, because it is never found again.
  analyze(
      "staff 1 at 0 instrument 2.5\nclef 1 at 2 height 1 kind 10\nclef 1 at 9 height 2 kind 20\n"
      "clef 1 at 20 height 3 kind 30\n");
  ASSERT_EQ(firstClefs.firstClefCount(), 3U);
  EXPECT_EQ(setDetailClef(firstClefs, 2), 1010);
  EXPECT_EQ(setDetailClefHite(firstClefs, 2), 1);
  EXPECT_EQ(setDetailClef(firstClefs, 3), 0);
}

TEST_F(FirstClefLookup, FractionRoundedToAnIdentifierThatIsThereComesSecond) {
  analyze(
      "staff 1 at 0 instrument 2\nclef 1 at 2 height 1 kind 10\nstaff 2 at 0 instrument 1.5\n"
      "clef 2 at 2 height 2 kind 20\n");
  ASSERT_EQ(firstClefs.firstClefCount(), 2U);
  EXPECT_EQ(setDetailClef(firstClefs, 2), 1010);
  EXPECT_EQ(setDetailClefHite(firstClefs, 2), 1);
}

TEST_F(FirstClefLookup, FractionThatCameFirstStandsForTheWholeIdentifierToo) {
  analyze(
      "staff 1 at 0 instrument 1.5\nclef 1 at 2 height 1 kind 10\nstaff 2 at 0 instrument 2\n"
      "clef 2 at 2 height 2 kind 20\nstaff 3 at 0 instrument 2.5\nclef 3 at 2 height 3 kind 30\n");
  ASSERT_EQ(firstClefs.firstClefCount(), 2U) << "the whole identifier is found, and enters no clef of its own";
  EXPECT_EQ(setDetailClef(firstClefs, 2), 1010);
  EXPECT_EQ(setDetailClefHite(firstClefs, 2), 1);
}

TEST_F(FirstClefLookup, NewAnalysisForgetsTheOldFirstEntries) {
  analyze("staff 1 at 0 instrument 5\nclef 1 at 2 kind 1\nstaff 2 at 0 instrument 2.5\nclef 2 at 2 kind 2\n");
  firstClefs = {};
  EXPECT_EQ(setDetailClef(firstClefs, 2), 0);
  analyze("staff 1 at 0 instrument 2\nclef 1 at 2 kind 7\n");
  EXPECT_EQ(setDetailClef(firstClefs, 2), 1007);
  EXPECT_EQ(setDetailClef(firstClefs, 5), 0);
}

TEST_F(FirstClefLookup, AnyTableIsSearchedFromItsFirstEntry) {
  Dice dice(52);
  for (int round = 0; round < 20; ++round) {
    firstClefs = {};
    std::string text;
    for (int staff = 1; staff <= 12; ++staff) {
      const std::string number = std::to_string(staff);
      text += "staff " + number + " at 0 instrument " + std::to_string(dice.below(6)) + (dice.oneIn(2) ? ".5\n" : "\n");
      text += "clef " + number + " at 2 height " + number + " kind " + std::to_string(dice.below(9)) + "\n";
    }
    analyze(text);
    for (std::int16_t instr = -1; instr < 8; ++instr) {
      float clef = 0;
      float hite = 0;
      for (std::size_t n = firstClefs.entries.size(); n > 0; --n) {
        const FirstClefTable::Entry& entry = firstClefs.entries[n - 1];
        clef = entry.firstClefInstr == instr ? entry.firstClefKind : clef;
        hite = entry.firstClefInstr == instr ? entry.firstClefHeight : hite;
      }
      ASSERT_EQ(setDetailClef(firstClefs, instr), clef) << text << instr;
      ASSERT_EQ(setDetailClefHite(firstClefs, instr), hite) << text << instr;
    }
  }
}

// --- against columns that are kept by hand ---

TEST_F(OrderTableTest, AnyRowOfConversionsFindsAndKeepsAsTheRulesSay) {
  Dice dice(53);
  std::vector<float> lines;
  for (int run = 0; run < 300; ++run) {
    Instruments distinct;
    for (std::uint32_t wanted = dice.below(9); wanted > 0; --wanted) {
      const auto instr = static_cast<std::int16_t>(dice.below(20));
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
      if (dice.oneIn(2)) {
        lines[k] = static_cast<float>(run + 1);
        order.entry(static_cast<int>(k) + 1).lines = lines[k];
      }
    }
  }
}

}  // namespace
}  // namespace kiv::test
