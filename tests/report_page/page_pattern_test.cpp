#include "report_page/page_pattern.h"

#include <gtest/gtest.h>

namespace kiv::report::test {
namespace {

TEST(PagePattern, StandsForAllPagesOfAPiece) {
  EXPECT_EQ(patternFor({"X1.MUS", "X2A.MUS", "X2B.MUS"}, {".", "..", "X1.MUS", "X2A.MUS", "X2B.MUS", "Y1.MUS"}),
            "X*.MUS");
  EXPECT_EQ(patternFor({"X1.MUS"}, {"X1.MUS", "X1.TXT"}), "X*.MUS");
}

TEST(PagePattern, IsNoneWhereItWouldStandForAnotherFile) {
  EXPECT_EQ(patternFor({"X1.MUS", "X2.MUS"}, {"X1.MUS", "X2.MUS", "X3.MUS"}), std::nullopt);
  EXPECT_EQ(patternFor({"X1.MUS", "X2.MUS"}, {"X1.MUS", "X2.MUS", "XY1.MUS"}), std::nullopt);
}

TEST(PagePattern, IsNoneForFilesWithoutACommonBeginning) {
  EXPECT_EQ(patternFor({"1.MUS", "2.MUS"}, {"1.MUS", "2.MUS"}), std::nullopt);
  EXPECT_EQ(patternFor({"A1.MUS", "B1.MUS"}, {"A1.MUS", "B1.MUS"}), std::nullopt);
  EXPECT_EQ(patternFor({}, {}), std::nullopt);
}

TEST(PagePattern, IsNoneForFilesOfSeveralSuffixes) {
  EXPECT_EQ(patternFor({"X1.MUS", "X2.MUT"}, {"X1.MUS", "X2.MUT"}), std::nullopt);
}

}  // namespace
}  // namespace kiv::report::test
