#include <gtest/gtest.h>

#include "tests/conversion/order_table_fixture.h"

namespace kiv::test {
namespace {

class BarLength : public OrderTableTest {
 protected:
  float of(float upper, float lower) {
    convert({5});
    order.entry(1).timeUp = upper;
    order.entry(1).timeDn = lower;
    float length = -1;
    host.messages.clear();
    end = endOf(host, [&] { length = setDetailTime(order, 5); });
    return length;
  }
};

TEST_F(BarLength, IsUpperOverLowerInQuarters) {
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

}  // namespace
}  // namespace kiv::test
