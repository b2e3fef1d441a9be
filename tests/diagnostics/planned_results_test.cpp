#include "diagnostics/planned_results.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;

TEST(StavesOfResult, FromTheTopWithRestsWhereTheSystemHadNone) {
  const std::string result =
      page("staff 1 at 0 instrument 103\nnote 1 at 5\nstaff 2 at 0 instrument 102\nstaff 3 at 0 instrument -101\n");
  EXPECT_THAT(stavesOfResult(result, {101, 103}),
              ElementsAre(PlannedStaff{3, 101, false}, PlannedStaff{2, 102, true}, PlannedStaff{1, 103, false}));
}

}  // namespace
}  // namespace kiv::test
