#include "report_page/system_finder.h"

#include <gtest/gtest.h>

#include "tests/diagnostics/run.h"

namespace kiv::report::test {
namespace {

/// The systems of pages in C:\M, as an analysis finds them.
class SystemFinderOf : public ::testing::Test, public kiv::test::DiagnosedRun {
 protected:
  static constexpr const char* twoSystems =
      "staff 3 at 0 instrument 101\nbarline 3 at 0 spans 1\nstaff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\n"
      "barline 1 at 0 spans 2\n";

  SystemFinder finder() {
    run();
    return SystemFinder(*group);
  }
};

TEST_F(SystemFinderOf, ANumberIsThatSystem) {
  addPage("X1.MUS", twoSystems);
  addPage("X2.MUS", "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  const SystemFinder found = finder();
  ASSERT_EQ(group->systemCount(), 3U);
  for (std::size_t system = 0; system < 3; ++system) {
    EXPECT_EQ(found.withNumber(group->systemNumber(system)), system);
  }
  EXPECT_EQ(found.withNumber(0), std::nullopt);
  EXPECT_EQ(found.withNumber(4), std::nullopt);
}

TEST_F(SystemFinderOf, AStaffIsOfTheSystemThatHasIt) {
  addPage("X1.MUS", twoSystems);
  addPage("X2.MUS", twoSystems);
  SystemFinder found = finder();
  ASSERT_EQ(group->systemCount(), 4U);
  EXPECT_EQ(found.withStaff("C:\\M\\X1.MUS", 3), 0U);
  EXPECT_EQ(found.withStaff("C:\\M\\X1.MUS", 1), 1U);
  EXPECT_EQ(found.withStaff("C:\\M\\X2.MUS", 3), 2U);
  EXPECT_EQ(found.withStaff("C:\\M\\X2.MUS", 2), 3U);
  EXPECT_EQ(found.withStaff("C:\\M\\X1.MUS", 2), 1U);
}

TEST_F(SystemFinderOf, AStaffThatIsNotListedIsOfTheOnlySystemOfItsFile) {
  addPage("X1.MUS", "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  addPage("X2.MUS", twoSystems);
  SystemFinder found = finder();
  EXPECT_EQ(found.withStaff("C:\\M\\X1.MUS", 9), 0U);
  EXPECT_EQ(found.withStaff("C:\\M\\X2.MUS", 9), std::nullopt);
}

TEST_F(SystemFinderOf, ASystemOfSeveralFilesIsFoundByEach) {
  addPage("X1A.MUS", "staff 2 at 0 instrument 101\n");
  addPage("X1B.MUS", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n");
  SystemFinder found = finder();
  ASSERT_EQ(group->systemCount(), 1U);
  EXPECT_EQ(found.withStaff("C:\\M\\X1A.MUS", 2), 0U);
  EXPECT_EQ(found.withStaff("C:\\M\\X1B.MUS", 1), 0U);
}

TEST_F(SystemFinderOf, AFileThatWasNotReadHasNone) {
  addPage("X1.MUS", twoSystems);
  SystemFinder found = finder();
  EXPECT_EQ(found.withStaff("C:\\M\\X9.MUS", 1), std::nullopt);
  EXPECT_EQ(found.withStaff("", 1), std::nullopt);
}

TEST(SystemFinder, WithoutPagesThereIsNone) {
  const GroupFacts facts{WantedFacts()};
  SystemFinder found(facts);
  EXPECT_EQ(found.withNumber(1), std::nullopt);
  EXPECT_EQ(found.withStaff("C:\\M\\X1.MUS", 1), std::nullopt);
}

}  // namespace
}  // namespace kiv::report::test
