#include "tests/suggestions/suggestion_rates.h"

#include <gtest/gtest.h>

#include "tests/suggestions/calibration_groups.h"
#include "tests/suggestions/validation_groups.h"

namespace kiv::test {
namespace {

/// The rates of generated groups, undamaged ones and damaged consistent ones apart.
struct Rates {
  SuggestionRates undamaged;
  SuggestionRates consistent;
};

template <typename MakeGroup>
Rates ratesOf(std::uint32_t groups, const MakeGroup& make) {
  Rates rates;
  for (std::uint32_t number = 0; number < groups; ++number) {
    const WrittenGroup group = writeGroup(make(number));
    const Suggestions suggestions = suggestFor(group);
    if (group.kind.starts_with("undamaged")) {
      rates.undamaged.add(group, suggestions);
    } else if (group.kind.starts_with("consistent")) {
      rates.consistent.add(group, suggestions);
    }
  }
  return rates;
}

void expectGoodRates(const Rates& rates) {
  EXPECT_EQ(rates.undamaged.groupsWithSure, 0U);
  EXPECT_LE(rates.undamaged.groupsWithAny, rates.undamaged.groups / 50 + 1) << "few groups are tried here";
  const SuggestionRates& damaged = rates.consistent;
  EXPECT_GE(1000 * damaged.right[0], 995 * damaged.proposed[0]) << "of those that are sure";
  EXPECT_GE(100 * damaged.covered, 95 * damaged.damaged) << "sure or likely, and right";
}

TEST(SuggestionRates, OfTheGroupsTheyWereCalibratedWithAreGood) {
  expectGoodRates(ratesOf(120, calibrationGroup));
}

TEST(SuggestionRates, OfOtherGroupsAreGood) {
  expectGoodRates(ratesOf(120, validationGroup));
}

/// Of the groups in which no instrument is wrong everywhere: there nothing says which one it is.
template <typename MakeGroup>
SuggestionRates ratesOfFewSystems(std::uint32_t groups, const MakeGroup& make) {
  constexpr std::size_t fewest = 4;
  SuggestionRates rates;
  for (std::uint32_t number = 0; rates.groups < groups; ++number) {
    const PlannedGroup planned = make(number);
    if (systemsOf(planned) == fewest && planned.kind.starts_with("consistent") &&
        planned.kind != "consistent: one instrument everywhere") {
      const WrittenGroup group = writeGroup(planned);
      rates.add(group, suggestFor(group));
    }
  }
  return rates;
}

TEST(SuggestionRates, OfGroupsOfFourSystemsAreGood) {
  SuggestionRates rates = ratesOfFewSystems(200, calibrationGroup);
  rates.add(ratesOfFewSystems(200, validationGroup));
  EXPECT_GE(1000 * rates.right[0], 995 * rates.proposed[0]) << "of those that are sure";
  EXPECT_GE(100 * rates.covered, 95 * rates.damaged) << "sure or likely, and right";
}

TEST(SuggestionRates, CountWhatIsRightWrongAndLeftOut) {
  WrittenGroup group;
  group.staves = {{"A.MUS", 1, 0, 101}, {"A.MUS", 2, 0, 102}, {"A.MUS", 3, 103, 103}};
  Suggestions suggestions;
  suggestions.corrections.push_back(
      {{"C:\\A.MUS", 1, "1", 1, false, IdProblem::zero, 0}, 101, Confidence::sure, 9, ""});
  suggestions.corrections.push_back(
      {{"C:\\A.MUS", 1, "3", 3, false, IdProblem::rare, 103}, 7, Confidence::likely, 2, ""});
  SuggestionRates rates;
  rates.add(group, suggestions);
  EXPECT_EQ(rates.damaged, 2U);
  EXPECT_EQ(rates.covered, 1U);
  EXPECT_EQ(rates.right[0], 1U);
  EXPECT_EQ(rates.proposed[1], 1U);
  EXPECT_EQ(rates.right[1], 0U);
  EXPECT_EQ(rates.groupsWithSure, 1U);
}

}  // namespace
}  // namespace kiv::test
