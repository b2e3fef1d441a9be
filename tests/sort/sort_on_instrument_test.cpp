#include "sort/sort_on_instrument.h"

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string sortProblem = "Sort problem";
const std::string barlineProblem = "System barline problem.";

class SortOnInstrument : public ::testing::Test {
 protected:
  std::string sorted(std::string_view pageText) {
    table = tableOf(host, pageText);
    end = endOf(host, [&] { sortOnInstrument(table); });
    return asText(table);
  }
  void expectEnd(std::string_view pageText, const std::string& text) {
    host.messages.clear();
    sorted(pageText);
    EXPECT_EQ(end, 1) << pageText;
    EXPECT_EQ(host.messages, std::vector{critical(text)}) << pageText;
  }

  FakeHost host;
  ItemTable table;
  std::optional<int> end;
};

// --- the order ---

TEST_F(SortOnInstrument, NumbersTheStavesFromTheHighestInstrumentDown) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 10\n"
                   "staff 2 at 0 instrument 30\n"
                   "staff 3 at 0 instrument 20\n"
                   "note 1 at 50 height 1\n"
                   "note 2 at 50 height 2\n"
                   "note 3 at 50 height 3\n"
                   "barline 1 at 90 spans 3\n"),
            "staff 1 at 0 instrument 30\n"
            "note 1 at 50 height 2\n"
            "staff 2 at 0 instrument 20\n"
            "note 2 at 50 height 3\n"
            "staff 3 at 0 instrument 10\n"
            "note 3 at 50 height 1\n"
            "barline 1 at 90 spans 3\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(SortOnInstrument, RunsFromLeftToRightWithinAnInstrument) {
  EXPECT_EQ(sorted("note 1 at 100\nbarline 1 at 90 spans 1\nclef 1 at 50\nstaff 1 at 60 instrument 7\nnote 1 at -5\n"),
            "note 1 at -5\nclef 1 at 50\nstaff 1 at 60 instrument 7\nbarline 1 at 90 spans 1\nnote 1 at 100\n");
}

TEST_F(SortOnInstrument, RunsUpwardsInP4AtOnePosition) {
  EXPECT_EQ(sorted("note 1 at 50 height 7\nbarline 1 at 50 spans 1\nnote 1 at 50 height -2\n"
                   "staff 1 at 50 instrument 7\n"),
            "note 1 at 50 height -2\nstaff 1 at 50 instrument 7\nbarline 1 at 50 spans 1\nnote 1 at 50 height 7\n");
}

TEST_F(SortOnInstrument, KeepsItemsOfEqualKeysAsTheyCameWhateverTheirType) {
  const std::string items =
      "note 1 at 50 height 1 p8 3\nbarline 1 at 50 spans 1\ntimesignature 1 at 50 p4 1\n"
      "clef 1 at 50 height 1\nnote 1 at 50 height 1 p8 2\nstaff 1 at 50 p4 1 instrument 9\n";
  EXPECT_EQ(sorted(items), items);
}

TEST_F(SortOnInstrument, MovesAllParametersAndTheText) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 1\n"
                   "countedtext 1 at 9 p6 2 \"low\"\n"
                   "staff 2 at 0 instrument 2 p18 5 p19 6 p20 7\n"
                   "countedtext 2 at 9 p6 3 \"high\"\n"
                   "barline 2 at 99 spans 2 p20 8\n"),
            "staff 1 at 0 instrument 2 p18 5 p19 6 p20 7\n"
            "countedtext 1 at 9 p6 3 characters 4 \"high\"\n"
            "barline 1 at 99 spans 2 p20 8\n"
            "staff 2 at 0 instrument 1\n"
            "countedtext 2 at 9 p6 2 characters 3 \"low\"\n");
}

TEST_F(SortOnInstrument, ComparesIdentifiersExactly) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 0.1\nstaff 2 at 0 instrument 0.10000001\nstaff 3 at 0 instrument -7\n"
                   "barline 3 at 9 spans 3\n"),
            "staff 1 at 0 instrument 0.10000001\nstaff 2 at 0 instrument 0.1\nstaff 3 at 0 instrument -7\n"
            "barline 1 at 9 spans 3\n");
}

// --- whose items they are ---

TEST_F(SortOnInstrument, FindsAStaffAfterItsItems) {
  EXPECT_EQ(sorted("note 1 at 5\nbarline 2 at 6 spans 2\nstaff 2 at 9 instrument 3\nstaff 1 at 9 instrument 4\n"),
            "note 1 at 5\nstaff 1 at 9 instrument 4\nbarline 1 at 6 spans 2\nstaff 2 at 9 instrument 3\n");
}

TEST_F(SortOnInstrument, UsesTheFirstOfSeveralStavesOfOneNumber) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 10\n"
                   "staff 1 at 1 instrument 99\n"
                   "staff 2 at 0 instrument 50\n"
                   "note 1 at 5\n"
                   "barline 1 at 9 spans 3\n"),
            "staff 1 at 0 instrument 50\n"
            "staff 2 at 0 instrument 10\n"
            "staff 2 at 1 instrument 99\n"
            "note 2 at 5\n"
            "barline 1 at 9 spans 3\n");
}

TEST_F(SortOnInstrument, RoundsAFractionalStaffNumberHalvesToEven) {
  // Each of them is a staff number of its own when the staves are renumbered.
  EXPECT_EQ(sorted("staff 2 at 0 instrument 20\n"
                   "staff 3.4 at 0 instrument 30\n"
                   "note 1.5 at 5\n"
                   "note 2.5 at 6\n"
                   "note 2.5 at 7\n"
                   "note 2.6 at 8\n"
                   "barline 3.5 at 9 spans 3\n"
                   "staff 4 at 0 instrument 10\n"),
            "staff 1 at 0 instrument 30\n"
            "note 2 at 8\n"
            "staff 3 at 0 instrument 20\n"
            "note 4 at 5\n"
            "note 5 at 6\n"
            "note 5 at 7\n"
            "staff 6 at 0 instrument 10\n"
            "barline 1 at 9 spans 3\n");
}

TEST_F(SortOnInstrument, AcceptsAnyStaffNumberOfSixteenBits) {
  EXPECT_EQ(sorted("staff -32768.5 at 0 instrument 2\nstaff 32767.4 at 0 instrument 1\nnote -32768 at 5\n"
                   "note 32767 at 6\nstaff 0 at 0 instrument 3\nbarline -0.5 at 9 spans 3\n"),
            "staff 1 at 0 instrument 3\nbarline 1 at 9 spans 3\n"
            "staff 3 at 0 instrument 2\nnote 4 at 5\n"
            "staff 5 at 0 instrument 1\nnote 6 at 6\n");
}

TEST_F(SortOnInstrument, KnowsAStaffByItsTypeOnly) {
  expectEnd("item 8.5 1 0 0 0 0 0 0 3\nbarline 1 at 5\n", sortProblem);
  expectEnd("clef 1 at 0 p9 3\nbarline 1 at 5\n", sortProblem);
}

// --- new numbers ---

TEST_F(SortOnInstrument, InterleavesStavesOfOneInstrumentAndSplitsThem) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 5\n"
                   "staff 2 at 0 instrument 5\n"
                   "note 1 at 10\n"
                   "note 1 at 30\n"
                   "note 2 at 20\n"
                   "note 2 at 20 height 1\n"
                   "barline 2 at 40 spans 2\n"),
            "staff 1 at 0 instrument 5\n"
            "staff 2 at 0 instrument 5\n"
            "note 3 at 10\n"
            "note 4 at 20\n"
            "note 4 at 20 height 1\n"
            "note 5 at 30\n"
            "barline 1 at 40 spans 2\n");
}

TEST_F(SortOnInstrument, ClosesGapsBetweenStaffNumbers) {
  EXPECT_EQ(sorted("staff 9 at 0 instrument 3\nstaff 40 at 0 instrument 2\nstaff -4 at 0 instrument 1\n"
                   "barline 9 at 5 spans 3\n"),
            "staff 1 at 0 instrument 3\nbarline 1 at 5 spans 3\n"
            "staff 2 at 0 instrument 2\nstaff 3 at 0 instrument 1\n");
}

// --- the system barline ---

TEST_F(SortOnInstrument, MovesTheSystemBarlineToStaffOne) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 1\nstaff 2 at 0 instrument 2\nstaff 3 at 0 instrument 3\n"
                   "barline 1 at 9 spans 3\nbarline 1 at 8 spans 2\nbarline 2 at 8 spans 1\n"),
            "staff 1 at 0 instrument 3\n"
            "staff 2 at 0 instrument 2\nbarline 2 at 8 spans 1\n"
            "staff 3 at 0 instrument 1\nbarline 3 at 8 spans 2\nbarline 1 at 9 spans 3\n");
}

TEST_F(SortOnInstrument, MovesTheFirstOfSeveralSystemBarlinesInTheNewOrder) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 1\nstaff 2 at 0 instrument 2\nstaff 3 at 0 instrument 3\n"
                   "barline 1 at 3 spans 3 kind 1\nbarline 2 at 9 spans 3 kind 2\nbarline 2 at 7 spans 3 kind 3\n"),
            "staff 1 at 0 instrument 3\n"
            "staff 2 at 0 instrument 2\nbarline 1 at 7 spans 3 kind 3\nbarline 2 at 9 spans 3 kind 2\n"
            "staff 3 at 0 instrument 1\nbarline 3 at 3 spans 3 kind 1\n");
}

TEST_F(SortOnInstrument, TreatsABraceOverAllStavesAsTheSystemBarline) {
  EXPECT_EQ(sorted("staff 1 at 0 instrument 1\nstaff 2 at 0 instrument 2\nbarline 1 at 1 spans 2 kind 9\n"
                   "barline 1 at 5 spans 2\n"),
            "staff 1 at 0 instrument 2\nstaff 2 at 0 instrument 1\nbarline 1 at 1 spans 2 kind 9\n"
            "barline 2 at 5 spans 2\n");
}

TEST_F(SortOnInstrument, EndsTheProgramWithoutABarlineOverJustAllStaves) {
  const std::string twoStaves = "staff 1 at 0 instrument 1\nstaff 2 at 0 instrument 2\n";
  for (const char* other : {"", "barline 1 at 5 spans 1\n", "barline 1 at 5 spans 3\n", "barline 1 at 5\n",
                            "barline 1 at 5 spans 2.0000002\n", "barline 1 at 5 spans 0x7FC00000\n",
                            "note 1 at 5 height 2\n", "item 14.5 1 5 2\n", "item 13 1 5 2\n"}) {
    expectEnd(twoStaves + other, barlineProblem);
  }
}

TEST_F(SortOnInstrument, CountsEveryStaffItemForTheSystemBarline) {
  const std::string staffTwice = "staff 1 at 0 instrument 1\nstaff 1 at 1 instrument 1\n";
  expectEnd(staffTwice + "barline 1 at 5 spans 1\n", barlineProblem);
  sorted(staffTwice + "barline 1 at 5 spans 2\n");
  EXPECT_EQ(end, std::nullopt);
}

// --- failures ---

TEST_F(SortOnInstrument, EndsTheProgramOverAnEmptyTable) {
  expectEnd("", barlineProblem);
}

TEST_F(SortOnInstrument, EndsTheProgramOverAnItemWithoutItsStaff) {
  expectEnd("staff 1 at 0 instrument 3\nbarline 1 at 5 spans 1\nnote 2 at 7\n", sortProblem);
  expectEnd("staff 1 at 0 instrument 3\nbarline 1 at 5 spans 1\nnote 1.6 at 7\n", sortProblem);
}

TEST_F(SortOnInstrument, EndsTheProgramOverItemsWithoutAnyStaff) {
  expectEnd("note 1 at 5\nbarline 1 at 7\n", sortProblem);
}

TEST_F(SortOnInstrument, EndsTheProgramOverAStaffNumberBeyondSixteenBits) {
  const std::string system = "staff 1 at 0 instrument 3\nbarline 1 at 5 spans 1\n";
  for (const char* staff : {"32767.5", "40000", "-32769", "3e9", "0x7FC00000", "0x7F800000", "0xFF800000"}) {
    expectEnd(system + "note " + staff + " at 7\n", "Run-time error: Overflow\r\nC:\\TABLE.MUS, item 3");
    expectEnd(system + "staff " + staff + " at 7\n", "Run-time error: Overflow\r\nC:\\TABLE.MUS, item 3");
  }
}

TEST_F(SortOnInstrument, LooksAtTheStavesBeforeTheOtherItems) {
  expectEnd("note 2 at 5\nstaff 40000 at 0\n", "Run-time error: Overflow\r\nC:\\TABLE.MUS, item 2");
  expectEnd("note 2 at 5\nnote 40000 at 0\nstaff 1 at 0\n", sortProblem);
}

}  // namespace
}  // namespace kiv::test
