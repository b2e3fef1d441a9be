#include "analysis/left_barlines.h"

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

class LeftBarlines : public ::testing::Test {
 protected:
  std::string marked(std::string_view text) {
    table = tableOf(host, text);
    end = endOf(host, [&] { deleteLeftBarlines(table); });
    return asText(table);
  }
  static std::string staves(int count) {
    std::string text;
    for (int s = 1; s <= count; ++s) {
      text += "staff " + std::to_string(s) + " at 0\n";
    }
    return text;
  }

  FakeHost host;
  ItemTable table;
  std::optional<int> end;
};

TEST_F(LeftBarlines, StaffWithoutOneIsASystemOfItsOwn) {
  EXPECT_EQ(marked("staff 1 at 0\nstaff 2 at 0\n"), "staff 1 at 0 p19 1 p20 1\nstaff 2 at 0 p19 1 p20 1\n");
}

TEST_F(LeftBarlines, SpannedStavesAreSkipped) {
  EXPECT_EQ(marked(staves(4) + "barline 1 at 0 spans 3\nbarline 4 at 0 spans 1\n"),
            "staff 1 at 0 p19 3 p20 1\nstaff 2 at 0\nstaff 3 at 0\nstaff 4 at 0 p19 1 p20 1\n"
            "barline 1 at 0 spans 3 p20 1\nbarline 4 at 0 spans 1 p20 1\n");
}

TEST_F(LeftBarlines, DistanceOf1CountsAnd1Point01DoesNot) {
  EXPECT_EQ(marked("staff 1 at 10\nbarline 1 at 11\nbarline 1 at 9\nbarline 1 at 11.01\nbarline 1 at 8.99\n"),
            "staff 1 at 10 p19 1 p20 1\nbarline 1 at 11 p20 1\nbarline 1 at 9 p20 1\n"
            "barline 1 at 11.01\nbarline 1 at 8.99\n");
}

TEST_F(LeftBarlines, BracesAreMarkedMinus1) {
  EXPECT_EQ(marked("staff 1 at 0\nbarline 1 at 0 kind 7\nbarline 1 at 0 kind 7.5\nbarline 1 at 0 kind 8\n"),
            "staff 1 at 0 p19 1 p20 1\nbarline 1 at 0 kind 7 p20 1\nbarline 1 at 0 kind 7.5 p20 -1\n"
            "barline 1 at 0 kind 8 p20 -1\n");
}

TEST_F(LeftBarlines, KindThatIsNoNumberIsNoPlainBarline) {
  marked("staff 1 at 0\nbarline 1 at 0 kind 0x7FC00000\n");
  EXPECT_EQ(table.itemPar(2, par::mark), -1);
}

TEST_F(LeftBarlines, SpanIsTheLargestOfAllBarlinesOfTheStaff) {
  marked(staves(5) + "barline 1 at 0 spans 2\nbarline 1 at 300 spans 4\nbarline 1 at 0 kind 8 spans 3\n");
  EXPECT_EQ(table.itemPar(1, par::stavesUp), 4);
  EXPECT_EQ(table.itemPar(5, par::mark), 1) << "the next system starts on staff 5";
}

TEST_F(LeftBarlines, SpanOfABraceCountsToo) {
  marked(staves(3) + "barline 1 at 0 spans 1\nbarline 1 at 0 kind 9 spans 2\n");
  EXPECT_EQ(table.itemPar(1, par::stavesUp), 2);
  EXPECT_EQ(table.itemPar(2, par::mark), 0);
}

TEST_F(LeftBarlines, SpanIsRoundedHalvesToEven) {
  marked(staves(1) + "barline 1 at 0 spans 2.5\n");
  EXPECT_EQ(table.itemPar(1, par::stavesUp), 2);
  marked(staves(1) + "barline 1 at 0 spans 3.5\n");
  EXPECT_EQ(table.itemPar(1, par::stavesUp), 4);
  marked(staves(1) + "barline 1 at 0 spans 0.5\n");
  EXPECT_EQ(table.itemPar(1, par::stavesUp), 1) << "a span of 0 becomes 1";
}

TEST_F(LeftBarlines, NegativeSpanBecomes1) {
  marked(staves(1) + "barline 1 at 0 spans -3\n");
  EXPECT_EQ(table.itemPar(1, par::stavesUp), 1);
}

TEST_F(LeftBarlines, SpanBeyond16BitsIsARunTimeError) {
  marked(staves(1) + "barline 1 at 0 spans 32768\n");
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\TABLE.MUS, item 2")});
}

TEST_F(LeftBarlines, SpanBeyond16BitsIsNotLookedAtWithoutAStaff) {
  marked("staff 2 at 0\nbarline 1 at 0 spans 40000\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(LeftBarlines, StaffAfterTheLargestSpanNeedsNo16BitNumber) {
  const std::string page = "staff 3 at 0\nstaff 4 at 0\nbarline 3 at 0 spans 32767\n";
  EXPECT_EQ(marked(page), "staff 3 at 0 p19 32767 p20 1\nstaff 4 at 0\nbarline 3 at 0 spans 32767 p20 1\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(LeftBarlines, StavesAbove256AreNeverVisited) {
  EXPECT_EQ(marked("staff 256 at 0\nstaff 257 at 0\nbarline 257 at 0\n"),
            "staff 256 at 0 p19 1 p20 1\nstaff 257 at 0\nbarline 257 at 0\n");
}

TEST_F(LeftBarlines, StavesWithoutAWholeNumberAreNeverVisited) {
  EXPECT_EQ(marked("staff 1.5 at 0\nstaff 0 at 0\nstaff -1 at 0\n"), "staff 1.5 at 0\nstaff 0 at 0\nstaff -1 at 0\n");
}

TEST_F(LeftBarlines, EveryStaffItemOfTheNumberIsMarked) {
  EXPECT_EQ(marked("staff 1 at 0\nstaff 1 at 500\nbarline 1 at 500 spans 2\nstaff 2 at 0\n"),
            "staff 1 at 0 p19 2 p20 1\nstaff 1 at 500 p19 2 p20 1\nbarline 1 at 500 spans 2 p20 1\nstaff 2 at 0\n");
}

TEST_F(LeftBarlines, BarlinesOfSkippedStavesStayUnmarked) {
  EXPECT_EQ(marked(staves(2) + "barline 1 at 0 spans 2\nbarline 2 at 0 spans 1\nbarline 2 at 0 kind 8\n"),
            "staff 1 at 0 p19 2 p20 1\nstaff 2 at 0\nbarline 1 at 0 spans 2 p20 1\nbarline 2 at 0 spans 1\n"
            "barline 2 at 0 kind 8\n");
}

}  // namespace
}  // namespace kiv::test
