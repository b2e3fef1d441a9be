#include "drawing/chart.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/drawing/charts.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;

TEST(ChartTest, InstrumentsAreOrderedAsInAResult) {
  const Chart chart = chartOf(record(1, 108, 2, "X1.MUS") + record(1, 111, 1, "X1.MUS") + record(2, 101, 1, "X2.MUS"));
  EXPECT_THAT(chart.instruments, ElementsAre(101, 108, 111));
  ASSERT_EQ(chart.systems.size(), 2U);
  EXPECT_THAT(chart.systems[0].cells, ElementsAre(Presence::missing, Presence::present, Presence::present));
  EXPECT_THAT(chart.systems[1].cells, ElementsAre(Presence::present, Presence::missing, Presence::missing));
  EXPECT_EQ(chart.summary(), "X: 2 systems on 2 pages, 3 instruments; 3 rest staves to be inserted");
}

TEST(ChartTest, SeveralStavesOfOneIdAreADuplicate) {
  const Chart chart = chartOf(record(1, 5, 2, "X1.MUS") + record(1, 5, 1, "X1.MUS"));
  EXPECT_THAT(chart.systems.at(0).cells, ElementsAre(Presence::duplicate));
}

TEST(ChartTest, AZeroIdIsAProblemUnlessAllowed) {
  const std::string report = record(1, 0, 2, "X1.MUS") + record(1, 0, 1, "X1.MUS");
  EXPECT_THAT(chartOf(report).systems.at(0).cells, ElementsAre(Presence::zeroId));
  EXPECT_THAT(chartOf(report, true).systems.at(0).cells, ElementsAre(Presence::present));
}

TEST(ChartTest, SystemsContinueDownAPage) {
  const Chart chart = chartOf(record(1, 5, 3, "X1.MUS") + record(2, 5, 2, "X1.MUS") + record(3, 5, 1, "X1.MUS") +
                              record(4, 5, 1, "X2.MUS") + record(5, 5, 1, "X2.MUS"));
  ASSERT_EQ(chart.pages.size(), 3U) << "a page that was selected twice stands there twice";
  EXPECT_EQ(chart.pages[0].name, "X1.MUS");
  EXPECT_EQ(chart.pages[1].firstSystem, 3U);
  EXPECT_EQ(chart.systems[2].page, 0U);
  EXPECT_TRUE(chart.startsPage(3));
  EXPECT_FALSE(chart.startsPage(2));
}

TEST(ChartTest, AMultifilePageIsNamedWithItsLetters) {
  const Chart chart = chartOf(record(1, 5, 3, "X1A.MUS") + record(1, 6, 2, "X1B.MUS") + record(1, 7, 1, "X1C.MUS"));
  ASSERT_EQ(chart.pages.size(), 1U);
  EXPECT_EQ(chart.pages[0].name, "X1ABC.MUS");
  EXPECT_EQ(chart.pages[0].files, 3U);
}

TEST(ChartTest, NamesTheSystemsWithAnotherOrder) {
  const Chart chart = chartOf(record(1, 5, 2, "X1.MUS") + record(1, 6, 1, "X1.MUS") + record(2, 6, 2, "X2.MUS") +
                              record(2, 5, 1, "X2.MUS"));
  EXPECT_EQ(chart.outOfOrder(), "2");
}

TEST(ChartTest, OnlyTheStavesThatAConversionMovesAreMarked) {
  const Chart chart = chartOf(record(1, 9, 4, "X1.MUS") + record(1, 5, 3, "X1.MUS") + record(1, 6, 2, "X1.MUS") +
                              record(1, 7, 1, "X1.MUS") + record(2, 5, 2, "X2.MUS") + record(2, 6, 1, "X2.MUS"));
  EXPECT_THAT(chart.systems[0].moved, ElementsAre(false, false, false, true)) << "9 stands above the others";
  EXPECT_FALSE(chart.systems[0].inOrder);
  EXPECT_THAT(chart.systems[1].moved, ElementsAre());
  EXPECT_TRUE(chart.hasMovedStaves());
}

TEST(ChartTest, IsNamedByItsPiece) {
  EXPECT_EQ(chartOf(record(1, 5, 1, "SONATA-1.MUS")).piece, "SONATA");
  EXPECT_EQ(chartOf(record(1, 5, 1, "0001.MUS")).piece, "");
}

TEST(ChartTest, NamesTheFirstOfManySystemsWithAnotherOrder) {
  Chart chart = chartOf(30, 1);
  for (ChartSystem& system : chart.systems) {
    system.inOrder = false;
  }
  EXPECT_EQ(chart.outOfOrder(), "1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12 and 18 more");
}

TEST(ChartTest, AnEmptyReportHasNoSystems) {
  const Chart chart = chartOf("");
  EXPECT_EQ(chart.summary(), "0 systems on 0 pages, 0 instruments; 0 rest staves to be inserted");
}

TEST(ChartTest, AStaffOfNoSystemHasARowAllTheSame) {
  const Chart chart = chartOf(record(0, 9, 2, "X1.MUS") + record(1, 5, 1, "X1.MUS"));
  EXPECT_THAT(chart.instruments, ElementsAre(5, 9)) << "a conversion inserts it everywhere";
  EXPECT_THAT(chart.systems.at(0).cells, ElementsAre(Presence::present, Presence::missing));
}

}  // namespace
}  // namespace kiv::test
