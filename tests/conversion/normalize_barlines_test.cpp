#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/conversion/barlines_fixture.h"

namespace kiv::test {
namespace {

// --- the same barlines on every staff ---

TEST_F(Barlines, EveryStaffGetsTheModelBarlinesButTheFirstWhichSpansAllStaves) {
  EXPECT_EQ(normalized("staff 1 at 0 lines 5 instrument 101\n"
                       "barline 1 at 3 spans 2 kind 1\n"
                       "note 1 at 20\n"
                       "barline 1 at 50 spans 1 kind 2 p10 4 p11 13\n"
                       "staff 2 at 0 lines 5 instrument 102\n"
                       "barline 2 at 51 spans 1\n"
                       "staff 3 at 0 lines 5 instrument 103 p20 1\n",
                       {{3, 1}, {50, 2}, {90, 0}}),
            "staff 1 at 0 lines 5 instrument 101\n"
            "item 999 1 at 3 p4 2 p5 1\n"
            "note 1 at 20\n"
            "item 999 1 at 50 p4 1 p5 2 p10 4 p11 13\n"
            "staff 2 at 0 lines 5 instrument 102\n"
            "item 999 2 at 51 p4 1\n"
            "staff 3 at 0 lines 5 instrument 103 p20 1\n"
            "barline 1 at 50 spans 1 kind 2\n"
            "barline 1 at 90 spans 1\n"
            "barline 2 at 50 spans 1 kind 2\n"
            "barline 2 at 90 spans 1\n"
            "barline 3 at 50 spans 1 kind 2\n"
            "barline 3 at 90 spans 1\n"
            "barline 1 at 3 spans 3 kind 1\n");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Barlines, BracesAreDiscardedWithTheBarlinesAndNothingElseIs) {
  EXPECT_EQ(normalized("barline 1 at 0 spans 3 kind 8\nbarline 2 at 0 kind 9\nbarline 5 at 0\nitem 14.5 1 5\n"
                       "item 13 1 5\ncountedtext 1 at 5 \"a\"\nstaff 1 at 0 instrument 101\n",
                       {{3, 0}}),
            "item 999 1 at 0 p4 3 p5 8\nitem 999 2 at 0 p5 9\nitem 999 5 at 0\nitem 14.5 1 at 5\n"
            "item 13 1 at 5\ncountedtext 1 at 5 characters 1 \"a\"\nstaff 1 at 0 instrument 101\n"
            "barline 1 at 3 spans 1\n");
}

TEST_F(Barlines, StavesComeInItemOrderWhateverTheirNumbersAre) {
  EXPECT_EQ(normalized("staff 3 at 0 instrument 101\nstaff 2.5 at 0 instrument 101\nstaff 3 at 9 instrument 103\n",
                       {{3, 0}, {50, 0}}),
            "staff 3 at 0 instrument 101\nstaff 2.5 at 0 instrument 101\nstaff 3 at 9 instrument 103\n"
            "barline 3 at 50 spans 1\nbarline 2.5 at 50 spans 1\nbarline 3 at 50 spans 1\n"
            "barline 1 at 3 spans 3\n");
}

TEST_F(Barlines, TwoAtOnePositionAreCopiedToEveryStaff) {
  EXPECT_EQ(normalized("staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\n", {{3, 0}, {50, 1}, {50, 0}}),
            "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\n"
            "barline 1 at 50 spans 1 kind 1\nbarline 1 at 50 spans 1\n"
            "barline 2 at 50 spans 1 kind 1\nbarline 2 at 50 spans 1\n"
            "barline 1 at 3 spans 2\n");
}

TEST_F(Barlines, SecondBarlineAtTheLeftEdgeIsLikeAnyOther) {
  EXPECT_EQ(normalized("staff 1 at 0 instrument 101\n", {{3, 1}, {3, 2}}),
            "staff 1 at 0 instrument 101\nbarline 1 at 3 spans 1 kind 2\nbarline 1 at 3 spans 1 kind 1\n");
}

TEST_F(Barlines, ListOfOneGivesTheSystemBarlineOnly) {
  EXPECT_EQ(normalized("staff 2 at 0 instrument 101\nbarline 2 at 50\n", {{3, -4}}),
            "staff 2 at 0 instrument 101\nitem 999 2 at 50\nbarline 1 at 3 spans 1 kind -4\n");
}

TEST_F(Barlines, PositionAndKindAreWrittenAsListed) {
  EXPECT_EQ(normalized("staff 1 at 0 instrument 101\n", {{-3, 32767}, {notANumber, -32768}, {infinity, 8}}),
            "staff 1 at 0 instrument 101\nbarline 1 at 0x7FC00000 spans 1 kind -32768\n"
            "barline 1 at 0x7F800000 spans 1 kind 8\nbarline 1 at -3 spans 1 kind 32767\n");
}

TEST_F(Barlines, SystemBarlineOfNoStavesSpansNone) {
  EXPECT_EQ(normalized("item 8.5 1 0\nclef 1 at 2\n", {{3, 0}, {50, 0}}),
            "item 8.5 1 at 0\nclef 1 at 2\nbarline 1 at 3\n");
}

TEST_F(Barlines, StaffOfOneLineGetsP11OfOneAndP10OfFive) {
  order.entry(1).lines = 1;
  EXPECT_EQ(normalized("staff 1 at 0 lines 5 instrument 101\nstaff 2 at 0 lines 1 instrument 102\n", {{3, 0}, {50, 0}}),
            "staff 1 at 0 lines 5 instrument 101\nstaff 2 at 0 lines 1 instrument 102\n"
            "barline 1 at 50 spans 1 p10 5 p11 1\nbarline 2 at 50 spans 1\n"
            "barline 1 at 3 spans 2\n")
      << "the lines of the order table count, and the system barline has neither";
}

TEST_F(Barlines, OtherNumbersOfLinesGiveTheirCodeWithoutP10) {
  const std::pair<float, std::string> codes[] = {{2, " p11 5"},  {3, " p11 7"}, {4, " p11 9"}, {5, ""},
                                                 {6, " p11 13"}, {7, ""},       {0, ""},       {-1, ""}};
  for (const auto& [lines, code] : codes) {
    order.entry(1).lines = lines;
    EXPECT_EQ(normalized("staff 1 at 0 instrument 101\n", {{3, 0}, {50, 2}}),
              "staff 1 at 0 instrument 101\nbarline 1 at 50 spans 1 kind 2" + code + "\nbarline 1 at 3 spans 1\n")
        << lines;
  }
}

TEST_F(Barlines, InstrumentOfAStaffIsRoundedHalvesToEven) {
  order.entry(2).lines = 1;
  for (const char* instrument : {"101.5", "102.5", "101.6", "102.4"}) {
    EXPECT_EQ(normalized(std::string("staff 1 at 0 instrument ") + instrument, {{3, 0}, {50, 0}}),
              std::string("staff 1 at 0 instrument ") + instrument +
                  "\nbarline 1 at 50 spans 1 p10 5 p11 1\nbarline 1 at 3 spans 1\n");
  }
}

TEST_F(Barlines, InstrumentOutsideTheOrderTableHasBarlinesOfFiveLines) {
  EXPECT_EQ(normalized("staff 1 at 0 lines 1 instrument 7\nstaff 2 at 0\n", {{3, 0}, {50, 0}}),
            "staff 1 at 0 lines 1 instrument 7\nstaff 2 at 0\n"
            "barline 1 at 50 spans 1\nbarline 2 at 50 spans 1\nbarline 1 at 3 spans 2\n");
}

TEST_F(Barlines, StaffBarlineIsAsLikeAsTheModelAllows) {
  order.entry(1).lines = 1;
  const Item barline = staffBarline(order, 101, 4, {7.5F, 3});
  EXPECT_EQ(barline, itemOf({14, 4, 7.5F, 1, 3, 0, 0, 0, 0, 5, 1}));
  EXPECT_EQ(staffBarline(order, 103, 1, {0, 0}), itemOf({14, 1, 0, 1}));
}

TEST_F(Barlines, RowsLeftBeyondTheTableNeitherCountNorShowThrough) {
  items = tableOf(host,
                  "staff 1 at 0 instrument 101\ncountedtext 9 at 9 p4 9 p6 9 p10 9 p11 9 \"old\"\n"
                  "staff 9 at 9 p5 9 instrument 101 p13 9 p20 9\nstaff 9 at 9 instrument 103\nbarline 1 at 7\n");
  items.clear();
  items.store_item(itemOf({ItemType::staff.number(), 1, 0, 0, 0, 0, 0, 0, 101}));
  normalizeTable({{3, 0}, {50, 0}});
  EXPECT_EQ(asText(items), "staff 1 at 0 instrument 101\nbarline 1 at 50 spans 1\nbarline 1 at 3 spans 1\n");
  EXPECT_EQ(items.type(5), ItemType::barline) << "rows beyond the table stay";
}

// --- failures ---

TEST_F(Barlines, WithoutAnyBarlineTheProgramEnds) {
  items = tableOf(host, "staff 1 at 0 instrument 101\nbarline 1 at 0 kind 8\n");
  normalizeTable({});
  expectEnd("Run-time error: Subscript out of range\r\nC:\\TABLE.MUS");
  EXPECT_EQ(items.itemCount(), 2);
}

TEST_F(Barlines, InstrumentThatSixteenBitsDoNotHoldEndsTheProgram) {
  for (const char* instrument : {"32767.5", "40000", "-32769", "0x7FC00000"}) {
    items = tableOf(host, std::string("staff 1 at 0 instrument 101\nstaff 2 at 0 instrument ") + instrument);
    normalizeTable({{3, 0}, {50, 0}});
    expectEnd("Run-time error: Overflow\r\nC:\\TABLE.MUS, item 2");
    EXPECT_EQ(items.itemCount(), 3);
  }
}

TEST_F(Barlines, InstrumentIsNotNeededWithoutABarlineForTheStaff) {
  EXPECT_EQ(normalized("staff 1 at 0 instrument 40000\n", {{3, 0}}),
            "staff 1 at 0 instrument 40000\nbarline 1 at 3 spans 1\n");
}

TEST_F(Barlines, TableThatOverflowsEndsTheProgram) {
  items = tableOf(host, "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\n");
  while (items.itemCount() < itemLimit - 3) {
    items.store_item(Item(ItemType::note, 1, 0));
  }
  ItemTable tooFull = items;
  normalizeTable({{3, 0}, {50, 0}});
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(items.itemCount(), itemLimit);
  tooFull.store_item(Item(ItemType::note, 1, 0));
  items = tooFull;
  normalizeTable({{3, 0}, {50, 0}});
  expectEnd("MUS file too big for operation. Hit OK to terminate.");
}

}  // namespace
}  // namespace kiv::test
