#include "mus/marked_value.h"

#include <limits>

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(MarkedValue, IsUnknownAtFirst) {
  const MarkedValue value;
  EXPECT_FALSE(value.isKnown());
  EXPECT_EQ(value.stored(), 0);
}

TEST(MarkedValue, KeepsAWholeParameter) {
  for (const float parameter : {0.0F, 1.0F, 5.0F, -1.0F, 999.0F}) {
    const MarkedValue value(parameter);
    EXPECT_TRUE(value.isKnown()) << parameter;
    EXPECT_EQ(value.value(), parameter);
    EXPECT_EQ(value.stored(), parameter + 1000) << parameter;
  }
}

TEST(MarkedValue, LosesTheDigitsThatTheSumCannotHold) {
  EXPECT_EQ(MarkedValue(0.6F).value(), 0.5999756F);
  EXPECT_EQ(MarkedValue(0.1F).value(), 0.099975586F);
  EXPECT_EQ(MarkedValue(0.25F).value(), 0.25F) << "a power of two comes back as it was";
  EXPECT_EQ(MarkedValue(1e-6F).value(), 0);
  EXPECT_EQ(MarkedValue(1e9F).value(), 1e9F);
}

TEST(MarkedValue, CannotKeepMinusOneThousand) {
  const MarkedValue value(-1000);
  EXPECT_FALSE(value.isKnown());
  EXPECT_EQ(value, MarkedValue());
}

TEST(MarkedValue, ThatIsUnknownGivesMinusOneThousand) {
  EXPECT_EQ(MarkedValue().value(), -1000);
}

TEST(MarkedValue, GivesTheSumForANegativeParameter) {
  EXPECT_EQ(MarkedValue(3).valueUnlessNegative(), 3);
  EXPECT_EQ(MarkedValue(0).valueUnlessNegative(), 0);
  EXPECT_EQ(MarkedValue(-1).valueUnlessNegative(), 999);
  EXPECT_EQ(MarkedValue(-1500).valueUnlessNegative(), -500);
  EXPECT_EQ(MarkedValue().valueUnlessNegative(), 0);
}

TEST(MarkedValue, IsComparedByTheSum) {
  EXPECT_EQ(MarkedValue(0), MarkedValue(1e-6F));
  EXPECT_NE(MarkedValue(0), MarkedValue());
  EXPECT_NE(MarkedValue(0), MarkedValue(0.6F));
}

TEST(MarkedValue, KeepsWhatIsNoFiniteNumber) {
  constexpr float infinity = std::numeric_limits<float>::infinity();
  EXPECT_EQ(MarkedValue(infinity).value(), infinity);
  const MarkedValue value(std::numeric_limits<float>::quiet_NaN());
  EXPECT_TRUE(value.isKnown());
  EXPECT_NE(value.value(), value.value());
}

}  // namespace
}  // namespace kiv
