#include "verify/numbers.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace kiv::proof {
namespace {

TEST(RoundedTo16Bits, RoundsHalvesToEven) {
  EXPECT_EQ(roundedTo16Bits(2.5), 2);
  EXPECT_EQ(roundedTo16Bits(3.5), 4);
  EXPECT_EQ(roundedTo16Bits(-0.5), 0);
  EXPECT_EQ(roundedTo16Bits(-1.5), -2);
  EXPECT_EQ(roundedTo16Bits(2.49), 2);
  EXPECT_EQ(roundedTo16Bits(2.51), 3);
}

TEST(RoundedTo16Bits, HasLimits) {
  EXPECT_EQ(roundedTo16Bits(32767.4), 32767);
  EXPECT_EQ(roundedTo16Bits(32767.5), std::nullopt);
  EXPECT_EQ(roundedTo16Bits(-32768.5), -32768);
  EXPECT_EQ(roundedTo16Bits(-32769), std::nullopt);
  EXPECT_EQ(roundedTo16Bits(std::nan("")), std::nullopt);
  EXPECT_EQ(roundedTo16Bits(std::numeric_limits<double>::infinity()), std::nullopt);
}

TEST(GeneralForm, HasAtMostSevenDigits) {
  EXPECT_EQ(generalForm(101), "101");
  EXPECT_EQ(generalForm(-2.5F), "-2.5");
  EXPECT_EQ(generalForm(0.6F), "0.6");
  EXPECT_EQ(generalForm(9999999), "9999999");
  EXPECT_EQ(generalForm(1E7F), "1E+07");
  EXPECT_EQ(generalForm(-1.234567E-20F), "-1.234567E-20");
  EXPECT_EQ(generalForm(-0.0F), "0");
}

TEST(GeneralForm, HasWordsForTheOthers) {
  EXPECT_EQ(generalForm(std::nanf("")), "NAN");
  EXPECT_EQ(generalForm(-std::nanf("")), "NAN");
  EXPECT_EQ(generalForm(std::numeric_limits<float>::infinity()), "INF");
  EXPECT_EQ(generalForm(-std::numeric_limits<float>::infinity()), "-INF");
}

}  // namespace
}  // namespace kiv::proof
