#include "analysis/first_clef_table.h"

#include "tests/analysis/read_bar_data_fixture.h"

namespace kiv::test {
namespace {

/// The table of first clefs after pages were read.
class FirstClefs : public ReadBarData {
 protected:
  using Entries = std::vector<FirstClefTable::Entry>;
};

TEST_F(FirstClefs, KindIsAMarkedValueAndHeightIsAsItIs) {
  read("staff 1 at 0 instrument 101\nclef 1 at 2 height -3 kind 2\n");
  EXPECT_EQ(firstClefs.entries, (Entries{{101, MarkedValue(2), -3}}));
}

TEST_F(FirstClefs, ClefBeforeItsStaffIsNotSeen) {
  read("clef 1 at 2 kind 2\nstaff 1 at 0 instrument 101\n");
  EXPECT_EQ(firstClefs.entries, Entries{});
}

TEST_F(FirstClefs, OnlyTheFirstClefOfAnInstrumentCounts) {
  read("staff 1 at 0 instrument 101\nclef 1 at 2 kind 1\nclef 1 at 90 kind 2\n");
  EXPECT_EQ(firstClefs.entries, (Entries{{101, MarkedValue(1), 0}}));
}

TEST_F(FirstClefs, ASecondFileDoesNotReplaceTheEntry) {
  read("staff 1 at 0 instrument 101\nclef 1 at 2 kind 1\n");
  table.clear();
  read("staff 1 at 0 instrument 101\nclef 1 at 2 kind 3\nstaff 2 at 0 instrument 102\nclef 2 at 2 kind 4\n");
  EXPECT_EQ(firstClefs.entries, (Entries{{101, MarkedValue(1), 0}, {102, MarkedValue(4), 0}}));
}

TEST_F(FirstClefs, FileWithoutClefLeavesTheTable) {
  read("staff 1 at 0 instrument 101\nbarline 1 at 0\n");
  EXPECT_EQ(firstClefs.entries, Entries{});
}

TEST_F(FirstClefs, FirstStaffOfTheNumberIsTheClefs) {
  read("staff 1 at 0 instrument 101\nstaff 1 at 0 instrument 102\nclef 1 at 2 kind 1\n");
  EXPECT_EQ(firstClefs.entries, (Entries{{101, MarkedValue(1), 0}}));
}

TEST_F(FirstClefs, StavesOfAnyNumberHaveClefs) {
  for (const char* number : {"0", "-1", "1.5", "256", "257", "32767", "-32768", "-0"}) {
    firstClefs = {};
    table.clear();
    const std::string staff = std::string("staff ") + number + " at 0 instrument ";
    const std::string clef = std::string("clef ") + number + " at 2 kind 1\n";
    read("staff 9 at 0 instrument 109\n" + staff + "101\n" + staff + "102\n" + clef);
    EXPECT_EQ(firstClefs.entries, (Entries{{101, MarkedValue(1), 0}})) << number;
  }
}

TEST_F(FirstClefs, AClefOfTheSecondFileMayBeOnTheLastStaffOfTheFirst) {
  read("staff 3 at 0 instrument 103\nstaff 1 at 0 instrument 101\n");
  read("clef 1 at 2 kind 5\nclef 3 at 2 kind 6\n", 3);
  EXPECT_EQ(firstClefs.entries, (Entries{{101, MarkedValue(5), 0}, {103, MarkedValue(6), 0}}));
}

TEST_F(FirstClefs, ClefIsComparedAsReadWithStavesAsRaised) {
  read("staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\n");
  read("staff 1 at 0 instrument 201\nclef 1 at 2 kind 5\n", 2);
  EXPECT_EQ(firstClefs.entries, (Entries{{101, MarkedValue(5), 0}}))
      << "staff 1 is the lowest file's, not the clef's own";
}

TEST_F(FirstClefs, FractionalIdentifierIsRoundedAndNeverFoundAgain) {
  read("staff 1 at 0 instrument 2.5\nclef 1 at 2 kind 1\nclef 1 at 9 kind 3\n");
  EXPECT_EQ(firstClefs.entries, (Entries{{2, MarkedValue(1), 0}, {2, MarkedValue(3), 0}}));
}

TEST_F(FirstClefs, IdentifierBeyond16BitsIsARunTimeError) {
  read("staff 1 at 0 instrument 40000\nclef 1 at 2 kind 1\n");
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\A1.MUS, item 2")});
}

TEST_F(FirstClefs, MoreEntriesThan16BitsCountAreARunTimeError) {
  firstClefs.entries.resize(32767);
  read("staff 1 at 0 instrument 9\nclef 1 at 2 kind 1\n");
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\A1.MUS, item 2")});
}

TEST_F(FirstClefs, IdentifierBeyond16BitsIsNoProblemWithoutAClef) {
  read("staff 1 at 0 instrument 40000\n");
  EXPECT_EQ(end, std::nullopt);
}

}  // namespace
}  // namespace kiv::test
