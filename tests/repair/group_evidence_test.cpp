#include "repair/group_evidence.h"

#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

StaffEvidence staffOf(std::string_view file, int item, std::int16_t id) {
  StaffEvidence staff;
  staff.file = file;
  staff.staff = "1";
  staff.item = item;
  staff.id = id;
  return staff;
}

std::vector<CueEvidence> cuesOf(const GroupEvidence& group, std::size_t system, std::size_t staff) {
  const auto cues = group.cues(system, staff);
  return {cues.begin(), cues.end()};
}

TEST(GroupEvidence, StavesOfOneLookKeepTheirFilesAndItems) {
  GroupEvidence group;
  group.addSystem(4);
  group.addStaff(staffOf("A", 2, 101), {});
  group.addStaff(staffOf("B", 3, 102), {});
  group.addSystem(5);
  group.addStaff(staffOf("C", 7, 101), {});
  group.addStaff(staffOf("A", 8, 102), {});
  ASSERT_EQ(group.size(), 2U);
  EXPECT_EQ(group.number(1), 5);
  ASSERT_EQ(group.staffCount(0), 2U);
  ASSERT_EQ(group.staffCount(1), 2U);
  EXPECT_EQ(group.staff(0, 1).file, "B");
  EXPECT_EQ(group.staff(0, 1).item, 3);
  EXPECT_EQ(group.staff(1, 0).file, "C");
  EXPECT_EQ(group.staff(1, 0).item, 7);
  EXPECT_EQ(group.staff(1, 0).id, 101);
  EXPECT_EQ(group.staff(1, 1).file, "A");
  EXPECT_EQ(group.staff(1, 1).id, 102);
}

TEST(GroupEvidence, EachValueIsKept) {
  StaffEvidence staff = staffOf("A", 1, 101);
  staff.staff = "1.5";
  staff.name = "Violas";
  staff.clef = {2, -1};
  staff.lines = 5;
  staff.size = 0.75F;
  staff.key = -3;
  staff.brace = 2;
  staff.noteRange = -1;
  staff.shownNumber = 7;
  GroupEvidence group;
  group.addSystem(1);
  group.addStaff(staff, {});
  const StaffEvidence kept = group.staff(0, 0);
  EXPECT_EQ(kept.staff, "1.5");
  EXPECT_EQ(kept.name, "Violas");
  EXPECT_EQ(kept.clef, (ClefForm{2, -1}));
  EXPECT_EQ(kept.lines, 5);
  EXPECT_EQ(kept.size, 0.75F);
  EXPECT_EQ(kept.key, -3);
  EXPECT_EQ(kept.brace, 2);
  EXPECT_EQ(kept.noteRange, -1);
  EXPECT_EQ(kept.shownNumber, 7);
}

TEST(GroupEvidence, AnUnknownValueIsNoZero) {
  StaffEvidence zero = staffOf("A", 1, 101);
  zero.key = 0;
  GroupEvidence group;
  group.addSystem(1);
  group.addStaff(staffOf("A", 1, 101), {});
  group.addStaff(zero, {});
  EXPECT_EQ(group.staff(0, 0).key, std::nullopt);
  EXPECT_EQ(group.staff(0, 0).clef, std::nullopt);
  EXPECT_EQ(group.staff(0, 1).key, 0);
}

TEST(GroupEvidence, AZeroKeepsItsSignAndWhatIsNoNumberStaysNone) {
  GroupEvidence group;
  group.addSystem(1);
  for (const float lines : {0.0F, -0.0F, std::numeric_limits<float>::quiet_NaN()}) {
    StaffEvidence staff = staffOf("A", 1, 101);
    staff.lines = lines;
    group.addStaff(staff, {});
  }
  EXPECT_FALSE(std::signbit(group.staff(0, 0).lines.value()));
  EXPECT_TRUE(std::signbit(group.staff(0, 1).lines.value()));
  EXPECT_TRUE(std::isnan(group.staff(0, 2).lines.value()));
}

TEST(GroupEvidence, CueMarkersAreThoseOfTheirStaff) {
  const std::vector<CueEvidence> some = {{5, 101}, {9, 102}};
  const std::vector<CueEvidence> other = {{3, 103}};
  GroupEvidence group;
  group.addSystem(1);
  group.addStaff(staffOf("A", 1, 101), {});
  group.addStaff(staffOf("A", 2, 102), some);
  group.addSystem(2);
  group.addStaff(staffOf("B", 1, 101), other);
  group.addStaff(staffOf("B", 2, 102), {});
  EXPECT_THAT(cuesOf(group, 0, 0), IsEmpty());
  EXPECT_EQ(cuesOf(group, 0, 1), some);
  EXPECT_EQ(cuesOf(group, 1, 0), other);
  EXPECT_THAT(cuesOf(group, 1, 1), IsEmpty());
}

}  // namespace
}  // namespace kiv::test
