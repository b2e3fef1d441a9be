#include <cstdint>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "analysis/read_bar_data.h"
#include "conversion/order_table.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

class FirstClefLookup : public ::testing::Test {
 protected:
  /// Adds the first clefs of a page.
  void analyze(std::string_view pageText) {
    host.addFile("C:\\M\\A1.MUS", page(pageText));
    items.clear();
    BarDataReader(host, host, host).readBarData("C:\\M\\A1.MUS", 0, items, firstClefs);
  }

  FakeHost host;
  ItemTable items;
  FirstClefTable firstClefs;
};

TEST_F(FirstClefLookup, KindKeepsItsMarkerAndHeightIsAsItIs) {
  analyze(
      "staff 1 at 0 instrument 101\nclef 1 at 2 height -3 kind 2\nstaff 2 at 0 instrument 102\n"
      "clef 2 at 2 height 1004 kind 0\n");
  EXPECT_EQ(setDetailClef(firstClefs, 101), MarkedValue(2));
  EXPECT_EQ(setDetailClefHite(firstClefs, 101), -3);
  EXPECT_EQ(setDetailClef(firstClefs, 102), MarkedValue(0));
  EXPECT_EQ(setDetailClefHite(firstClefs, 102), 1004);
}

TEST_F(FirstClefLookup, FirstOfSeveralEntriesOfAnIdentifierCounts) {
  // An identifier of 2.5 enters as 2 every time that it is met, because it is never found again.
  analyze(
      "staff 1 at 0 instrument 2.5\nclef 1 at 2 height 1 kind 10\nclef 1 at 9 height 2 kind 20\n"
      "clef 1 at 20 height 3 kind 30\n");
  ASSERT_EQ(firstClefs.firstClefCount(), 3U);
  EXPECT_EQ(setDetailClef(firstClefs, 2), MarkedValue(10));
  EXPECT_EQ(setDetailClefHite(firstClefs, 2), 1);
  EXPECT_EQ(setDetailClef(firstClefs, 3), MarkedValue());
}

TEST_F(FirstClefLookup, FractionRoundedToAnIdentifierThatIsThereComesSecond) {
  analyze(
      "staff 1 at 0 instrument 2\nclef 1 at 2 height 1 kind 10\nstaff 2 at 0 instrument 1.5\n"
      "clef 2 at 2 height 2 kind 20\n");
  ASSERT_EQ(firstClefs.firstClefCount(), 2U);
  EXPECT_EQ(setDetailClef(firstClefs, 2), MarkedValue(10));
  EXPECT_EQ(setDetailClefHite(firstClefs, 2), 1);
}

TEST_F(FirstClefLookup, FractionThatCameFirstStandsForTheWholeIdentifierToo) {
  analyze(
      "staff 1 at 0 instrument 1.5\nclef 1 at 2 height 1 kind 10\nstaff 2 at 0 instrument 2\n"
      "clef 2 at 2 height 2 kind 20\nstaff 3 at 0 instrument 2.5\nclef 3 at 2 height 3 kind 30\n");
  ASSERT_EQ(firstClefs.firstClefCount(), 2U) << "the whole identifier is found, and enters no clef of its own";
  EXPECT_EQ(setDetailClef(firstClefs, 2), MarkedValue(10));
  EXPECT_EQ(setDetailClefHite(firstClefs, 2), 1);
}

TEST_F(FirstClefLookup, NewAnalysisForgetsTheOldFirstEntries) {
  analyze("staff 1 at 0 instrument 5\nclef 1 at 2 kind 1\nstaff 2 at 0 instrument 2.5\nclef 2 at 2 kind 2\n");
  firstClefs = {};
  EXPECT_EQ(setDetailClef(firstClefs, 2), MarkedValue());
  analyze("staff 1 at 0 instrument 2\nclef 1 at 2 kind 7\n");
  EXPECT_EQ(setDetailClef(firstClefs, 2), MarkedValue(7));
  EXPECT_EQ(setDetailClef(firstClefs, 5), MarkedValue());
}

TEST_F(FirstClefLookup, AnyTableIsSearchedFromItsFirstEntry) {
  RandomGenerator random(52);
  for (int round = 0; round < 20; ++round) {
    firstClefs = {};
    std::string text;
    for (int staff = 1; staff <= 12; ++staff) {
      const std::string number = std::to_string(staff);
      text +=
          "staff " + number + " at 0 instrument " + std::to_string(random.below(6)) + (random.oneIn(2) ? ".5\n" : "\n");
      text += "clef " + number + " at 2 height " + number + " kind " + std::to_string(random.below(9)) + "\n";
    }
    analyze(text);
    for (std::int16_t instr = -1; instr < 8; ++instr) {
      MarkedValue clef;
      float height = 0;
      for (std::size_t n = firstClefs.entries.size(); n > 0; --n) {
        const FirstClefTable::Entry& entry = firstClefs.entries[n - 1];
        clef = entry.firstClefInstr == instr ? entry.firstClefKind : clef;
        height = entry.firstClefInstr == instr ? entry.firstClefHeight : height;
      }
      ASSERT_EQ(setDetailClef(firstClefs, instr), clef) << text << instr;
      ASSERT_EQ(setDetailClefHite(firstClefs, instr), height) << text << instr;
    }
  }
}

}  // namespace
}  // namespace kiv::test
