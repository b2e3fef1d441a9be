#include "platform/console/progress_line.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using namespace std::chrono_literals;

/// Work whose clock a test moves on.
class ProgressLineTest : public ::testing::Test {
 protected:
  std::optional<std::string> after(std::chrono::milliseconds time, int done, int all, const char* plural = "pages") {
    line.note(done, all, plural);
    return line.lineAt(ProgressLine::Time(1h + time), columns);
  }

  ProgressLine line;
  std::size_t columns = 80;
};

TEST_F(ProgressLineTest, ShortWorkShowsNothing) {
  EXPECT_EQ(after(0ms, 0, 100), std::nullopt);
  EXPECT_EQ(after(499ms, 99, 100), std::nullopt);
  EXPECT_EQ(after(499ms, 100, 100), "");
}

TEST_F(ProgressLineTest, LongWorkHasABarACountARateAndTheTimeLeft) {
  after(0ms, 0, 400);
  EXPECT_EQ(after(500ms, 100, 400), "[#####...............] 100 of 400 pages, 200 a second, 2 s left");
  EXPECT_EQ(after(1000ms, 300, 400), "[###############.....] 300 of 400 pages, 300 a second, 1 s left");
  EXPECT_EQ(after(1300ms, 400, 400), "");
}

TEST_F(ProgressLineTest, SlowWorkIsCountedInTenthsMinutesAndHours) {
  after(0s, 0, 100);
  EXPECT_EQ(after(10s, 4, 100), "[....................] 4 of 100 pages, 0.4 a second, 4 min left");
  after(0s, 0, 100'000);
  EXPECT_EQ(after(20s, 20, 100'000), "[....................] 20 of 100000 pages, 1.0 a second, 28 h left");
}

TEST_F(ProgressLineTest, IsNotWrittenMoreOftenThanItCanBeRead) {
  after(0ms, 0, 400);
  EXPECT_NE(after(600ms, 100, 400), std::nullopt);
  EXPECT_EQ(after(699ms, 101, 400), std::nullopt);
  EXPECT_NE(after(700ms, 102, 400), std::nullopt);
}

TEST_F(ProgressLineTest, TheNextStageHasARateOfItsOwn) {
  after(0ms, 0, 400);
  after(2000ms, 400, 400);
  after(2000ms, 0, 50, "systems");
  EXPECT_EQ(after(3000ms, 25, 50, "systems"), "[##########..........] 25 of 50 systems, 25 a second, 1 s left");
}

TEST_F(ProgressLineTest, WhatWasDoneBeforeDoesNotCountAsSpeed) {
  after(0ms, 300, 400, "pieces");
  EXPECT_EQ(after(1000ms, 310, 400, "pieces"), "[###############.....] 310 of 400 pieces, 10 a second, 9 s left");
}

TEST_F(ProgressLineTest, ANarrowTerminalHasNoBar) {
  columns = 60;
  after(0ms, 0, 400);
  EXPECT_EQ(after(500ms, 100, 400), "100 of 400 pages, 200 a second, 2 s left");
}

TEST_F(ProgressLineTest, KnowsHowFarUnfinishedWorkHasCome) {
  EXPECT_EQ(line.reached(), "");
  line.note(12, 40, "systems");
  EXPECT_EQ(line.reached(), "12 of 40 systems");
  line.note(40, 40, "systems");
  EXPECT_EQ(line.reached(), "");
}

}  // namespace
}  // namespace kiv::test
