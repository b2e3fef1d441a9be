#include "analysis/zoned_line.h"

#include <limits>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

class ZonedLineTest : public ::testing::Test {
 protected:
  ZonedLine line() { return {host, "* "}; }
  static std::string blanks(std::size_t count) { return std::string(count, ' '); }

  FakeHost host;
};

TEST_F(ZonedLineTest, FirstFieldFollowsTheHead) {
  EXPECT_EQ(line().field("Nr").text(), "* Nr");
}

TEST_F(ZonedLineTest, NextFieldStartsAtTheNextZone) {
  EXPECT_EQ(line().field("Nr").field("Par1").field("Staff").text(),
            "* Nr" + blanks(10) + "Par1" + blanks(10) + "Staff");
}

TEST_F(ZonedLineTest, FieldThatFillsItsZoneSkipsAWholeOne) {
  EXPECT_EQ(line().field("ABCDEFGHIJK").field("X").text(), "* ABCDEFGHIJK X") << "one column short of the zone";
  EXPECT_EQ(line().field("ABCDEFGHIJKL").field("X").text(), "* ABCDEFGHIJKL" + blanks(14) + "X");
  EXPECT_EQ(line().field("ABCDEFGHIJKLM").field("X").text(), "* ABCDEFGHIJKLM" + blanks(13) + "X");
}

TEST_F(ZonedLineTest, EmptyFieldMovesOnByOneZone) {
  EXPECT_EQ(line().field("A").emptyField().field("B").text(), "* A" + blanks(25) + "B");
  EXPECT_EQ(line().field("A").emptyField().emptyField().field("B").text(), "* A" + blanks(39) + "B");
}

TEST_F(ZonedLineTest, NumbersHaveSignPositionAndTrailingBlank) {
  EXPECT_EQ(line().number(5).text(), "*  5 ");
  EXPECT_EQ(line().number(-5).text(), "* -5 ");
  EXPECT_EQ(line().number(-0.0F).text(), "*  0 ");
  EXPECT_EQ(line().number(2.5F).text(), "*  2.5 ");
  EXPECT_EQ(line().number(std::numeric_limits<float>::quiet_NaN()).text(), "*  NAN ");
  EXPECT_EQ(line().number(-std::numeric_limits<float>::infinity()).text(), "* -INF ");
}

TEST_F(ZonedLineTest, FieldsAndNumbersFollowOneAnother) {
  EXPECT_EQ(line().number(1).number(-20).field("ABC").number(3).text(),
            "*  1 " + blanks(9) + "-20 " + blanks(10) + "ABC" + blanks(11) + " 3 ");
  EXPECT_EQ(line().field("ABCDEFGHIJKLM").number(3).field("X").text(),
            "* ABCDEFGHIJKLM" + blanks(13) + " 3 " + blanks(11) + "X");
}

TEST_F(ZonedLineTest, ClearedLineIsLikeANewOne) {
  ZonedLine zones = line();
  zones.field("a long field of many columns").clear();
  EXPECT_EQ(zones.text(), "* ");
  EXPECT_EQ(zones.field("A").field("B").text(), line().field("A").field("B").text());
}

TEST_F(ZonedLineTest, NumberThatReachesIntoTheNextZonePushesTheNextField) {
  EXPECT_EQ(line().number(-1.234567E-10F).field("X").text(), "* -1.234567E-10 " + blanks(12) + "X");
}

}  // namespace
}  // namespace kiv::test
