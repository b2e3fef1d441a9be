#include "repair/coded_group.h"

#include <algorithm>
#include <cstdint>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<CodedStaff> stavesOf(const std::vector<std::int16_t>& ids) {
  std::vector<CodedStaff> staves;
  for (const std::int16_t id : ids) {
    staves.emplace_back().id = id;
  }
  return staves;
}

std::vector<std::int16_t> idsOf(const CodedSystem& system) {
  std::vector<std::int16_t> ids;
  std::transform(system.begin(), system.end(), std::back_inserter(ids),
                 [](const CodedStaff& staff) { return staff.id; });
  return ids;
}

TEST(CodedSystems, EachHasItsStavesFromTheTopDown) {
  CodedSystems systems;
  systems.add(stavesOf({101, 102, 103}));
  systems.add({});
  systems.add(stavesOf({103, 101, 101}));
  ASSERT_EQ(systems.size(), 3U);
  EXPECT_THAT(idsOf(systems[0]), ElementsAre(101, 102, 103));
  EXPECT_THAT(idsOf(systems[1]), IsEmpty());
  EXPECT_THAT(idsOf(systems[2]), ElementsAre(103, 101, 101));
  EXPECT_EQ(systems.front().size(), 3U);
}

TEST(CodedSystems, StavesThatDifferInAnythingStayApart) {
  CodedStaff staff;
  std::vector<CodedStaff> system = {staff};
  staff.id = 1;
  system.push_back(staff);
  staff.repeated = true;
  system.push_back(staff);
  staff.shownNumber = 2;
  system.push_back(staff);
  staff.name = 3;
  system.push_back(staff);
  for (int& feature : staff.features) {
    feature = unknownCode;
    system.push_back(staff);
  }
  CodedSystems systems;
  systems.add(system);
  systems.add(system);
  for (const CodedSystem one : systems) {
    EXPECT_TRUE(std::equal(one.begin(), one.end(), system.begin(), system.end()));
  }
}

}  // namespace
}  // namespace kiv::test
