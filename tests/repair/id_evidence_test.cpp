#include <cmath>

#include <gtest/gtest.h>

#include "repair/damage_rates.h"
#include "repair/id_progression.h"
#include "repair/slip_origins.h"
#include "repair/typing_slips.h"

namespace kiv::test {
namespace {

TEST(TypingSlips, AreOneDigitWrongAddedDoubledOrLeftOutOrTwoExchanged) {
  for (const int typed : {105, 1012, 1011, 10, 110, 1101}) {
    EXPECT_TRUE(isSlipOf(static_cast<std::int16_t>(typed), 101)) << typed;
  }
  for (const int typed : {101, 116, 11011, 1, 0}) {
    EXPECT_FALSE(isSlipOf(static_cast<std::int16_t>(typed), 101)) << typed;
  }
  EXPECT_TRUE(isSlipOf(66, 6));
}

TEST(TypingSlips, AnyOtherNumberIsPossibleButUnlikely) {
  EXPECT_GT(slipShare(999, 101), 0);
  EXPECT_GT(slipShare(105, 101), 10 * slipShare(999, 101));
}

TEST(TypingSlips, AllOfANumberTogetherAreNoMoreThanItsSlips) {
  double sum = 0;
  for (int typed = 1; typed <= 9999; ++typed) {
    sum += isSlipOf(static_cast<std::int16_t>(typed), 107) ? slipShare(static_cast<std::int16_t>(typed), 107) : 0;
  }
  EXPECT_GT(sum, 0.8);
  EXPECT_LT(sum, 1.2);
}

TEST(SlipOrigins, HaveAllThatWasTypedAmongTheirSlips) {
  const auto origins = slipOrigins({{1144, 1}, {7144, 1}, {44, 1}, {14, 1}});
  ASSERT_FALSE(origins.empty());
  EXPECT_EQ(origins.front().meant, 144);
}

TEST(SlipOrigins, AreOtherNumbersThanThoseTyped) {
  for (const SlipOrigin& origin : slipOrigins({{101, 2}, {1011, 1}})) {
    EXPECT_NE(origin.meant, 101);
    EXPECT_NE(origin.meant, 1011);
    EXPECT_TRUE(isSlipOf(101, origin.meant) || isSlipOf(1011, origin.meant)) << origin.meant;
  }
}

TEST(SlipOrigins, OfNothingAreNone) {
  EXPECT_TRUE(slipOrigins({}).empty());
}

TEST(IdProgression, FillsTheGapInARegularNumbering) {
  const IdProgression ids({101, 102, 103, 0, 105, 106});
  EXPECT_EQ(ids.missingId(3), 104);
}

TEST(IdProgression, FillsGapsOfAnyStepUpAndDown) {
  EXPECT_EQ(IdProgression({10, 20, 0, 40, 50}).missingId(2), 30);
  EXPECT_EQ(IdProgression({9, 8, 7, 0, 5}).missingId(3), 6);
  EXPECT_EQ(IdProgression({0, 102, 103, 104}).missingId(0), 101);
}

TEST(IdProgression, FillsNoGapInAnIrregularNumbering) {
  EXPECT_EQ(IdProgression({101, 105, 106, 0, 117, 123}).missingId(3), std::nullopt);
  EXPECT_EQ(IdProgression({101, 0}).missingId(1), std::nullopt);
}

TEST(IdProgression, FillsNoGapWithAnIdThatStandsElsewhere) {
  EXPECT_EQ(IdProgression({101, 102, 103, 0, 105, 106, 104}).missingId(3), std::nullopt);
}

TEST(IdProgression, FillsNoGapBelowOne) {
  EXPECT_EQ(IdProgression({0, 0, 1, 2, 3, 4}).missingId(0), std::nullopt);
}

TEST(IdProgression, PrefersTheIdThatFits) {
  const IdProgression ids({101, 102, 103, 0, 105, 106});
  EXPECT_GT(ids.fit(3, 104), ids.fit(3, 140) + 2);
}

TEST(DamageRates, AreCountedByTheirKinds) {
  CodedGroup group;
  std::vector<CodedStaff> system(4);
  system[0].id = 0;
  system[1] = system[2] = {.id = 5, .repeated = true, .features = {}};
  system[3].id = 7;
  group.systems.add(system);
  group.staves = 4;
  const DamageRates rates = estimateDamage(group, std::set<std::int16_t>{5});
  EXPECT_EQ(rates.evident, 3) << "the 0, one of the two 5, and the 7 that is no instrument";
  EXPECT_GT(rates.logWritten(5, 5, false), std::log(0.9));
  EXPECT_GT(rates.logWritten(5, 4, true), rates.logWritten(5, 4, false));
  EXPECT_GT(rates.logWritten(55, 5, false), rates.logWritten(98, 5, false));
}

}  // namespace
}  // namespace kiv::test
