#include <set>

#include <gtest/gtest.h>

#include "drawing/chart_drawings.h"
#include "tests/drawing/charts.h"
#include "tests/drawing/xml.h"

namespace kiv::test {
namespace {

std::vector<XmlElement> drawn(const Chart& chart) {
  return elementsOf(chartSvg(chart));
}

TEST(ChartSvg, IsASheetOfA4) {
  const XmlElement svg = drawn(chartOf(7, 12)).at(0);
  EXPECT_EQ(svg["width"], "297mm");
  EXPECT_EQ(svg["height"], "210mm");
  EXPECT_EQ(svg["viewBox"], "0 0 297 210");
}

TEST(ChartSvg, HasACellForEverySystemAndInstrument) {
  const std::string report = record(1, 0, 4, "X1A.MUS") + record(1, 5, 3, "X1A.MUS") + record(1, 5, 2, "X1B.MUS") +
                             record(1, 6, 1, "X1B.MUS") + record(2, 6, 1, "X2.MUS");
  const auto elements = drawn(chartOf(report));
  EXPECT_EQ(withClass(elements, "present").size(), 2U);
  EXPECT_EQ(withClass(elements, "missing").size(), 2U);
  EXPECT_EQ(withClass(elements, "duplicate").size(), 1U);
  EXPECT_EQ(withClass(elements, "zero").size(), 1U);
  EXPECT_EQ(withClass(elements, "instrument").size(), 3U);
  EXPECT_EQ(withClass(elements, "page").size(), 2U);
  EXPECT_EQ(withClass(elements, "multifile").size(), 2U) << "the page, and the legend";
  EXPECT_EQ(withClass(elements, "pagename").at(0).text, "X1AB");
  const auto present = withClass(elements, "present");
  EXPECT_EQ(present[0].number("y"), present[1].number("y")) << "a row is an instrument";
  EXPECT_LT(present[0].number("x"), present[1].number("x")) << "a column is a system";
}

TEST(ChartSvg, HundredsOfSystemsFillSeveralRowsOfTheSheet) {
  const auto elements = drawn(chartOf(300, 20));
  EXPECT_EQ(elements.at(0)["height"], "210mm");
  EXPECT_GT(withClass(elements, "row").size(), 1U);
  EXPECT_EQ(withClass(elements, "present").size() + withClass(elements, "missing").size(), 300U * 20U);
  std::set<double> lefts;
  for (const XmlElement& use : withTag(elements, "use")) {
    EXPECT_LE(use.number("x") + use.number("width"), 297 - 12 + 0.01);
    EXPECT_LE(use.number("y") + use.number("height"), 210);
  }
}

TEST(ChartSvg, NamesOfInstrumentsStandLeftOfTheCells) {
  Chart chart = chartOf(30, 2);
  const double before = withClass(drawn(chart), "instrument").at(0).number("x");
  chart.names = {{101, {"Flute & Piccolo", 15}}};
  const auto elements = drawn(chart);
  const auto labels = withClass(elements, "instrument");
  EXPECT_EQ(labels.at(0).text, "Flute & Piccolo 101");
  EXPECT_EQ(labels.at(1).text, "102");
  EXPECT_GT(labels.at(0).number("x"), before + 20) << "there is space for the name";
  EXPECT_GT(withClass(elements, "present").at(0).number("x"), labels.at(0).number("x"));
  for (const XmlElement& use : withTag(elements, "use")) {
    EXPECT_LE(use.number("x") + use.number("width"), 297 - 12 + 0.01);
  }
}

TEST(ChartSvg, AGroupTooLargeForTheSheetGetsALongerOne) {
  const auto elements = drawn(chartOf(900, 60));
  EXPECT_GT(elements.at(0).number("height"), 210);
  for (const XmlElement& use : withTag(elements, "use")) {
    ASSERT_LE(use.number("y") + use.number("height"), elements.at(0).number("height"));
  }
}

TEST(ChartSvg, NamesAreEscapedAndCut) {
  Chart chart = chartOf(1, 1);
  chart.pages[0].name =
      "A<&\"\xFF"
      "1.MUS";
  EXPECT_EQ(withClass(drawn(chart), "pagename").at(0).text,
            "A<&\"\xEF\xBF\xBD"
            "1");
  chart.pages[0].name = std::string(40, 'X') + "\xC3\xA4" + "BCDEFGHIJ012345.MUS";
  EXPECT_EQ(withClass(drawn(chart), "pagename").at(0).text, "...BCDEFGHIJ012345") << "no half of a character";
}

TEST(ChartSvg, AnEmptyChartIsADrawing) {
  EXPECT_EQ(drawn(Chart()).at(0)["height"], "210mm");
}

}  // namespace
}  // namespace kiv::test
