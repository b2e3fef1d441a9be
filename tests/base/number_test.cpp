#include "base/number.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

namespace kiv {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

TEST(GeneralNumber, KnownValues) {
  const std::pair<float, const char*> values[] = {
      {0.0F, "0"},
      {-0.0F, "0"},
      {3.0F, "3"},
      {-17.0F, "-17"},
      {2.5F, "2.5"},
      {0.1F, "0.1"},
      {-0.25F, "-0.25"},
      {1.0F / 3, "0.3333333"},
      {9999999.0F, "9999999"},
      {-9999999.0F, "-9999999"},
      {1E7F, "1E+07"},
      {-1E7F, "-1E+07"},
      {-12345678.0F, "-1.234568E+07"},
      {16777216.0F, "1.677722E+07"},
      {123456.7F, "123456.7"},
      {1234567.5F, "1234568"},
      {0.0001F, "0.0001"},
      {0.00001F, "1E-05"},
      {1.5E-10F, "1.5E-10"},
      {3.4028235E38F, "3.402823E+38"},
      {infinity, "INF"},
      {-infinity, "-INF"},
      {notANumber, "NAN"},
      {-notANumber, "NAN"},
  };
  for (const auto& [number, text] : values) {
    EXPECT_EQ(generalNumber(number), text);
  }
}

TEST(ToInt16, RoundsHalvesToEven) {
  const std::pair<double, int> values[] = {{0.5, 0},  {1.5, 2},   {2.5, 2},   {-0.5, 0},         {-1.5, -2},
                                           {2.51, 3}, {-2.4, -2}, {-2.6, -3}, {32767.49, 32767}, {-32768.5, -32768}};
  for (const auto& [number, whole] : values) {
    EXPECT_EQ(toInt16(number), whole) << number;
  }
}

TEST(ToInt16, HoldsNoMoreThan16Bits) {
  for (const double number : {32767.5, -32768.51, 1E30, -1E30, static_cast<double>(infinity),
                              static_cast<double>(-infinity), static_cast<double>(notANumber)}) {
    EXPECT_EQ(toInt16(number), std::nullopt) << number;
  }
}

TEST(ToInt32, Limits) {
  EXPECT_EQ(toInt32(2147483647.0), 2147483647);
  EXPECT_EQ(toInt32(-0.4), 0);
  EXPECT_EQ(toInt32(-0.6), -1);
  EXPECT_EQ(toInt32(2147483648.0), std::nullopt);
  EXPECT_EQ(toInt32(static_cast<double>(notANumber)), std::nullopt);
}

TEST(StrictNumber, ReadsWholeTextsOnly) {
  EXPECT_EQ(strictNumber("12"), 12.0);
  EXPECT_EQ(strictNumber("+12"), 12.0);
  EXPECT_EQ(strictNumber("-2.5"), -2.5);
  EXPECT_EQ(strictNumber(".5"), 0.5);
  EXPECT_EQ(strictNumber("1E+07"), 1E7);
  EXPECT_EQ(strictNumber("1E999"), std::numeric_limits<double>::infinity());
  EXPECT_EQ(strictNumber("1E-999"), 0.0);
  for (const char* text :
       {"", " 1", "1 ", "x", "1x", "NAN", "INF", "-INF", "+-1", "--1", "1E", ".", "-", "+", "0x10"}) {
    EXPECT_EQ(strictNumber(text), std::nullopt) << text;
  }
}

TEST(StrictNumber, ReadsWholeNumbersOfAnyLength) {
  EXPECT_EQ(strictNumber("0"), 0.0);
  EXPECT_EQ(strictNumber("007"), 7.0);
  EXPECT_EQ(strictNumber("987654321"), 987654321.0);
  EXPECT_EQ(strictNumber("9876543210"), 9876543210.0);
  EXPECT_EQ(strictNumber("98765432109876543210"), 98765432109876543210.0);
  EXPECT_EQ(strictNumber("/"), std::nullopt);
  EXPECT_EQ(strictNumber("1:"), std::nullopt);
}

TEST(NumericValue, IsTheLongestLeadingNumber) {
  const std::pair<const char*, double> values[] = {
      {"12", 12}, {"  12", 12}, {"12abc", 12}, {"-2.5 x", -2.5}, {"+3", 3},     {".5.", 0.5}, {"1E2E3", 100},
      {"1E", 1},  {"", 0},      {"x", 0},      {"  ", 0},        {"- 1", 0},    {"--1", 0},   {"NAN", 0},
      {"INF", 0}, {"0x10", 0},  {"7,5", 7},    {".", 0},         {"1E-999", 0}, {"\t1", 0},
  };
  for (const auto& [text, value] : values) {
    EXPECT_EQ(numericValue(text), value) << text;
  }
  EXPECT_EQ(numericValue("-1E999"), -std::numeric_limits<double>::infinity());
  EXPECT_EQ(numericValue(std::string(400, '9')), std::numeric_limits<double>::infinity());
}

}  // namespace
}  // namespace kiv
