#include "repair/rare_ids.h"

#include <cmath>
#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using RowOfIds = std::vector<std::int16_t>;

CodedGroup groupOf(const std::vector<RowOfIds>& systems) {
  CodedGroup group;
  for (std::size_t s = 0; s < systems.size(); ++s) {
    std::vector<CodedStaff> system;
    for (const std::int16_t id : systems[s]) {
      system.emplace_back().id = id;
      group.idSystems[id].push_back(static_cast<std::uint32_t>(s));
    }
    group.systems.add(system);
  }
  return group;
}

const RowOfIds pair = {101, 102};

TEST(RareIds, MayBeSlipsUnlessTheyStandInMostSystems) {
  const CodedGroup group = groupOf({{101, 102, 9}, {101, 9}, {101, 9}, {101, 9}, {7}});
  EXPECT_TRUE(mayBeSlip(group, 102));
  EXPECT_TRUE(mayBeSlip(group, 55)) << "stands nowhere";
  EXPECT_FALSE(mayBeSlip(group, 9)) << "four of five";
}

TEST(RareIds, OfASystemLikeTheOthersNeedLessThanOfOneWithOtherStaves) {
  const CodedGroup group = groupOf({pair, pair, pair, {101, 1022}, {101, 1021, 1022}, {1022}});
  const double usual = marginForRare(group, 3, 1022, 102);
  EXPECT_GT(marginForRare(group, 4, 1022, 102), usual) << "a staff more";
  EXPECT_GT(marginForRare(group, 5, 1022, 102), usual) << "a staff less";
}

TEST(RareIds, OfSystemsWithAnyNumberOfStavesNeedNoMore) {
  const CodedGroup group =
      groupOf({pair, pair, pair, {101, 1022}, {1}, {1, 2, 3}, {1, 2, 3, 4}, {1, 2, 3, 4, 5}, {1022}});
  EXPECT_EQ(marginForRare(group, 8, 1022, 102), marginForRare(group, 3, 1022, 102));
}

TEST(RareIds, AreNotReplacedByTheIdOfAStaffBesideThemInASystemWithOtherStaves) {
  const CodedGroup group = groupOf({pair, pair, pair, {101, 102, 1022}, {1022, 1023, 101}});
  EXPECT_TRUE(std::isinf(marginForRare(group, 4, 1022, 102)));
  EXPECT_FALSE(std::isinf(marginForRare(group, 4, 1022, 103)));
}

}  // namespace
}  // namespace kiv::test
