#include "conversion/braces.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "tests/conversion/braces_fixture.h"

namespace kiv::test {
namespace {

// --- collecting ---

TEST_F(Braces, InstrumentOfTheBracesStaffIsEnteredWithP4AsItsKind) {
  collect("staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\nbarline 2 at 0 spans 3 kind 9\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(asText(items), "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\nbarline 2 at 0 spans 3 kind 9\n");
  EXPECT_EQ(kindOf("102"), "3");
  EXPECT_EQ(kindOf("101"), "none");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Braces, BraceMayBeBeforeItsStaffAndAnywhereOnIt) {
  EXPECT_EQ(kindAfter("barline 1 at 500 spans 2 kind 8\nnote 1 at 5\nstaff 1 at 0 instrument 101\n"), "2");
}

TEST_F(Braces, BarlinesOfKindEightAndAboveAreBraces) {
  const std::string staff = "staff 1 at 0 instrument 101\n";
  for (const char* kind : {"8", "8.000001", "9", "40000", "0x7F800000"}) {
    braces = {};
    EXPECT_EQ(kindAfter(staff + "barline 1 at 0 spans 2 kind " + kind), "2") << kind;
  }
  for (const char* kind : {"7.9999995", "7", "0", "-8", "0x7FC00000", "0xFF800000"}) {
    braces = {};
    EXPECT_EQ(kindAfter(staff + "barline 1 at 0 spans 2 kind " + kind), "none") << kind;
  }
}

TEST_F(Braces, ItemsOfOtherTypesAreNoBracesAndNoStaves) {
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 101\nclef 1 at 0 height 2 kind 8\nitem 14.5 1 0 2 8\n"), "none");
  EXPECT_EQ(kindAfter("item 8.5 1 0 0 0 0 0 0 101\nclef 1 at 0 p9 101\nbarline 1 at 0 spans 2 kind 8 p9 101\n"),
            "none");
}

TEST_F(Braces, BraceHoldsForStavesOfExactlyItsNumber) {
  const std::string staff = "staff 2 at 0 instrument 101\n";
  for (const char* number : {"1", "3", "2.0000002", "-2", "0x7FC00000"}) {
    EXPECT_EQ(kindAfter(staff + "barline " + number + " at 0 spans 5 kind 8\n"), "none") << number;
  }
  EXPECT_EQ(kindAfter("staff -0 at 0 instrument 101\nbarline 0 at 0 spans 5 kind 8\n"), "5");
  EXPECT_EQ(kindAfter("staff 0x7FC00000 at 0 instrument 102\nbarline 0x7FC00000 at 0 spans 5 kind 8\n", "102"), "none");
}

TEST_F(Braces, EveryStaffItemOfTheNumberIsMet) {
  collect(
      "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 2 kind 8\nstaff 1 at 5 instrument 102\n"
      "staff 1 at 9\nstaff 1 at 9 instrument -7.5\n");
  EXPECT_EQ(kindOf("101"), "2");
  EXPECT_EQ(kindOf("102"), "2");
  EXPECT_EQ(kindOf("-7.5"), "2");
}

TEST_F(Braces, StaffWithInstrumentZeroIsNotRecorded) {
  EXPECT_EQ(kindAfter("staff 1 at 0\nbarline 1 at 0 spans 2 kind 8\n", "0"), "none");
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument -0\nbarline 1 at 0 spans 2 kind 8\n", "-0"), "none");
  EXPECT_TRUE(braces.kinds.empty());
}

TEST_F(Braces, KindIsRoundedHalvesToEven) {
  const std::pair<std::string, std::string> kinds[] = {{"2.5", "2"},        {"3.5", "4"},           {"-0.4", "0"},
                                                       {"2.6", "3"},        {"-32768.5", "-32768"}, {"0", "0"},
                                                       {"32767.4", "32767"}};
  for (const auto& [spans, kind] : kinds) {
    braces = {};
    EXPECT_EQ(kindAfter("staff 1 at 0 instrument 101\nbarline 1 at 0 kind 8 spans " + spans), kind) << spans;
  }
}

TEST_F(Braces, InstrumentKeepsItsFirstKind) {
  EXPECT_EQ(kindAfter("staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 101\nbarline 1 at 9 spans 4 kind 9\n"
                      "barline 1 at 0 spans 5 kind 8\nbarline 2 at 0 spans 6 kind 8\n"),
            "4")
      << "the first in the order of the braces, not of the staves";
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 7 kind 8\n"), "4") << "in later systems too";
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 102\nbarline 1 at 0 kind 8\nbarline 1 at 0 spans 3 kind 8\n", "102"),
            "0")
      << "a kind of 0 is one as well";
}

TEST_F(Braces, KindThatSixteenBitsDoNotHoldEndsTheProgram) {
  for (const char* kind : {"32767.5", "40000", "-32769", "0x7FC00000", "0x7F800000"}) {
    braces = {};
    collect(std::string("staff 1 at 0 instrument 101\nbarline 1 at 0 kind 8 spans ") + kind);
    expectEnd("Run-time error: Overflow\r\nC:\\TABLE.MUS, item 2");
  }
}

TEST_F(Braces, KindThatIsNotNeededMayBeAnything) {
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 101\nstaff 2 at 0\nbarline 1 at 0 spans 2 kind 8\n"
                      "barline 1 at 0 spans 40000 kind 8\nbarline 2 at 0 spans 40000 kind 8\n"
                      "barline 3 at 0 spans 40000 kind 8\nbarline 1 at 0 spans 40000 kind 7\n"),
            "2");
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 40000 kind 8\n"), "2");
}

TEST_F(Braces, InstrumentThatIsNoNumberIsNeverFoundInTheTable) {
  collect("staff 1 at 0 instrument 0x7FC00000\nbarline 1 at 0 spans 2 kind 8\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(kindOf("0x7FC00000"), "none");
  collect("staff 1 at 0 instrument 0x7FC00000\nbarline 1 at 0 spans 40000 kind 8\n");
  expectEnd("Run-time error: Overflow\r\nC:\\TABLE.MUS, item 2");
}

TEST_F(Braces, SecondBraceOfAnInstrumentThatIsNoNumberIsEnteredLikeTheFirst) {
  collect("staff 1 at 0 instrument 0x7FC00000\nbarline 1 at 0 spans 2 kind 8\nbarline 1 at 0 spans 40000 kind 8\n");
  expectEnd("Run-time error: Overflow\r\nC:\\TABLE.MUS, item 3");
}

TEST_F(Braces, RowsBeyondTheTableDoNotCount) {
  items = tableOf(host, "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 2 kind 8\nstaff 1 at 0 instrument 102\n");
  items.clear();
  collectBraces(items, braces);
  EXPECT_TRUE(braces.kinds.empty());
}

TEST_F(Braces, DiscardedBraceDoesNotCount) {
  items = tableOf(host, "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 2 kind 8\n");
  items.item(2).setType(ItemType::deleted);
  collectBraces(items, braces);
  EXPECT_TRUE(braces.kinds.empty());
}

// --- writing ---

TEST_F(Braces, EveryStaffOfABracedInstrumentGetsABraceAtPositionZero) {
  collect("staff 1 at 0 instrument 101\nbarline 1 at 7 spans 3 kind 9 p10 5 p11 1\n");
  EXPECT_EQ(written("staff 3 at 40 size 2 lines 1 instrument 101 p11 4\n"
                    "note 3 at 50 height 4 p9 101\n"
                    "staff 2 at 40 instrument 102\n"
                    "barline 1 at 40 spans 3\n"
                    "staff 1.5 at 40 instrument 101 p20 1\n"
                    "staff 1 at 40\n"),
            "staff 3 at 40 size 2 lines 1 instrument 101 p11 4\n"
            "note 3 at 50 height 4 p9 101\n"
            "staff 2 at 40 instrument 102\n"
            "barline 1 at 40 spans 3\n"
            "staff 1.5 at 40 instrument 101 p20 1\n"
            "staff 1 at 40\n"
            "barline 3 at 0 spans 3 kind 8\n"
            "barline 1.5 at 0 spans 3 kind 8\n");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(Braces, InstrumentFirstBracedInSystem3HasBracesFromThenOn) {
  const std::string unbraced = "staff 1 at 0 instrument 101\n";
  const std::string braced = unbraced + "barline 1 at 0 spans 3 kind 8\n";
  EXPECT_EQ(kindAfter(unbraced), "none");
  EXPECT_EQ(kindAfter(unbraced), "none");
  EXPECT_EQ(kindAfter(braced), "3");
  EXPECT_EQ(kindAfter(unbraced), "3");
  EXPECT_EQ(kindAfter("staff 1 at 0 instrument 102\nbarline 1 at 0 spans 2 kind 8\n"), "3");
}

TEST_F(Braces, EveryInstrumentHasItsOwnKind) {
  collect(
      "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\nbarline 2 at 0 spans 2 kind 8\n"
      "barline 1 at 0 spans 1 kind 8\n");
  EXPECT_EQ(written("staff 1 at 0 instrument 102\nstaff 2 at 0 instrument 101\n"),
            "staff 1 at 0 instrument 102\nstaff 2 at 0 instrument 101\n"
            "barline 1 at 0 spans 2 kind 8\nbarline 2 at 0 spans 1 kind 8\n");
}

TEST_F(Braces, KindZeroIsWrittenToo) {
  collect("staff 1 at 0 instrument 101\nbarline 1 at 0 kind 8\n");
  EXPECT_EQ(written("staff 1 at 0 instrument 101\n"), "staff 1 at 0 instrument 101\nbarline 1 at 0 kind 8\n");
}

TEST_F(Braces, InstrumentsAreComparedExactly) {
  collect("staff 1 at 0 instrument 101.5\nbarline 1 at 0 spans 3 kind 8\n");
  for (const char* other : {"101", "102", "101.50001", "-101.5", "0", "0x7FC00000"}) {
    EXPECT_EQ(kindOf(other), "none") << other;
  }
  EXPECT_EQ(kindOf("101.5"), "3");
}

TEST_F(Braces, OnlyStaffItemsGetBraces) {
  collect("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 3 kind 8\n");
  const std::string others = "note 1 at 5 p9 101\nitem 8.5 1 at 0 p9 101\nbarline 1 at 0 kind 8 p9 101\n";
  EXPECT_EQ(written("note 1 at 5 p9 101\nitem 8.5 1 0 0 0 0 0 0 101\nbarline 1 at 0 kind 8 p9 101\n"), others);
}

TEST_F(Braces, EmptyTableOfBracesWritesNone) {
  EXPECT_EQ(written("staff 1 at 0 instrument 101\nstaff 2 at 0\n"), "staff 1 at 0 instrument 101\nstaff 2 at 0\n");
}

TEST_F(Braces, RowsLeftBeyondTheTableNeitherCountNorShowThrough) {
  collect("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 3 kind 8\n");
  items = tableOf(host,
                  "staff 1 at 0 instrument 101\ncountedtext 9 at 9 p6 9 p9 9 p11 9 \"old\"\n"
                  "staff 9 at 9 instrument 101\n");
  items.clear();
  items.store_item(itemOf({ItemType::staff.number(), 1, 0, 0, 0, 0, 0, 0, 101}));
  outputBraces(items, braces);
  EXPECT_EQ(asText(items), "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 3 kind 8\n");
}

TEST_F(Braces, TableThatOverflowsEndsTheProgram) {
  collect("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 3 kind 8\n");
  items.clear();
  while (items.itemCount() < itemLimit - 1) {
    items.store_item(Item(ItemType::note, 1, 0));
  }
  items.item(itemLimit - 1).setType(ItemType::staff);
  items.itemPar(itemLimit - 1, par::instrument) = 101;
  end = endOf(host, [&] { outputBraces(items, braces); });
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(items.itemCount(), itemLimit);
  EXPECT_EQ(items.itemPar(itemLimit, par::kind), 8);
  end = endOf(host, [&] { outputBraces(items, braces); });
  expectEnd("MUS file too big for operation. Hit OK to terminate.");
}

}  // namespace
}  // namespace kiv::test
