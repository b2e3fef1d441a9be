#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "drawing/chart_drawings.h"
#include "drawing/text_width.h"
#include "tests/drawing/charts.h"
#include "tests/drawing/xml.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;

std::vector<XmlElement> drawn(const Chart& chart, std::size_t systemsPerRow = 0) {
  return elementsOf(chartSvg(chart, systemsPerRow));
}

/// An upper left corner of what the paths of a class draw.
struct Corner {
  double x = 0;
  double y = 0;
};

/// Where the squares of a class are.
std::vector<Corner> squares(const std::vector<XmlElement>& elements, const std::string& className) {
  std::vector<Corner> corners;
  for (const XmlElement& path : withClass(elements, className)) {
    const std::string d = path["d"];
    for (std::size_t start = d.find('M'); start != std::string::npos; start = d.find('M', start + 1)) {
      std::istringstream numbers(d.substr(start + 1));
      Corner corner;
      numbers >> corner.x >> corner.y;
      corners.push_back(corner);
    }
  }
  return corners;
}

/// The sheet that an attribute transform="translate(0 Y)" is for.
std::vector<std::string> sheetTransforms(const std::vector<XmlElement>& elements) {
  std::vector<std::string> transforms;
  for (const XmlElement& sheet : withClass(elements, "sheet")) {
    transforms.push_back(sheet["transform"]);
  }
  return transforms;
}

void expectOnTheSheet(const std::vector<Corner>& corners) {
  for (const Corner& corner : corners) {
    ASSERT_LE(corner.x, 297 - 12);
    ASSERT_LE(corner.y, 210 - 12);
  }
}

TEST(ChartSvg, IsASheetOfA4) {
  const XmlElement svg = drawn(chartOf(7, 12)).at(0);
  EXPECT_EQ(svg["width"], "1123") << "297 mm in the pixels of a browser";
  EXPECT_EQ(svg["height"], "793");
  EXPECT_EQ(svg["viewBox"], "0 0 297 210");
}

TEST(ChartSvg, HasACellForEverySystemAndInstrument) {
  const std::string report = record(1, 0, 4, "X1A.MUS") + record(1, 5, 3, "X1A.MUS") + record(1, 5, 2, "X1B.MUS") +
                             record(1, 6, 1, "X1B.MUS") + record(2, 6, 1, "X2.MUS");
  const auto elements = drawn(chartOf(report));
  EXPECT_EQ(squares(elements, "present").size(), 3U) << "two, and the legend";
  EXPECT_EQ(squares(elements, "missing").size(), 3U);
  EXPECT_EQ(squares(elements, "duplicate").size(), 2U);
  EXPECT_EQ(squares(elements, "zero").size(), 2U);
  EXPECT_EQ(withClass(elements, "instrument").size(), 3U);
  EXPECT_EQ(withClass(elements, "page").size(), 2U);
  EXPECT_EQ(withClass(elements, "multifile").size(), 2U) << "the page, and the legend";
  EXPECT_EQ(withClass(elements, "pagename").at(0).text, "X1AB");
  const auto present = squares(elements, "present");
  EXPECT_EQ(present[0].y, present[1].y) << "a row is an instrument";
  EXPECT_LT(present[0].x, present[1].x) << "a column is a system";
}

TEST(ChartSvg, TheLegendListsOnlyWhatOccurs) {
  const auto legend = [](const Chart& chart) {
    std::vector<std::string> texts;
    for (const XmlElement& text : withClass(drawn(chart), "meaning")) {
      texts.push_back(text.text);
    }
    return texts;
  };
  EXPECT_THAT(legend(chartOf(7, 1)), ElementsAre("staff"));
  EXPECT_THAT(legend(chartOf(record(1, 6, 2, "X1A.MUS") + record(1, 5, 1, "X1B.MUS"))),
              ElementsAre("staff", "staff that a conversion moves", "page of several files"));
}

TEST(ChartSvg, MovedStavesAreMarked) {
  const auto elements = drawn(chartOf(record(1, 6, 2, "X1.MUS") + record(1, 5, 1, "X1.MUS")));
  EXPECT_EQ(withClass(elements, "moved").size(), 2U) << "one staff, and the legend";
  EXPECT_EQ(withClass(elements, "order").at(0).text, "Staves in another order than in a result: system 1");
}

TEST(ChartSvg, TheTitleNamesThePiece) {
  const auto elements = drawn(chartOf(3, 2));
  EXPECT_EQ(withClass(elements, "title").at(0).text, "PIECE");
  EXPECT_EQ(withClass(elements, "summary").at(0).text,
            "3 systems on 3 pages, 2 instruments; 3 rest staves to be inserted");
  EXPECT_EQ(withTag(elements, "title").at(0).text, "PIECE: systems by instruments");
}

TEST(ChartSvg, ThousandsOfSystemsFillSheetsWithHeadings) {
  const Chart chart = chartOf(3000, 12);
  const auto elements = drawn(chart);
  const std::vector<std::string> sheets = sheetTransforms(elements);
  ASSERT_GT(sheets.size(), 10U);
  EXPECT_EQ(sheets[1], "translate(0 210)");
  EXPECT_EQ(elements.at(0).number("height"), 793.0 * static_cast<double>(sheets.size())) << "whole pages of a browser";
  EXPECT_EQ(withClass(elements, "title").size(), sheets.size()) << "every sheet is headed";
  EXPECT_EQ(withClass(elements, "sheetnumber").at(1).text, "sheet 2 of " + std::to_string(sheets.size()));
  EXPECT_EQ(withClass(elements, "pagename").size(), 3000U) << "every column is headed by its page";
  const auto rows = withClass(elements, "row").size();
  EXPECT_EQ(withClass(elements, "instrument").size(), rows * 12) << "every row has its instruments";
  EXPECT_EQ(squares(elements, "present").size() + squares(elements, "missing").size(), 3000U * 12U + 2 * sheets.size());
  expectOnTheSheet(squares(elements, "present"));
  EXPECT_EQ(chartSvg(chart), chartSvg(chart));
}

TEST(ChartSvg, MoreInstrumentsThanFitBelowEachOtherAreDividedAmongSheets) {
  const auto elements = drawn(chartOf(900, 60));
  EXPECT_EQ(withClass(elements, "instrument").size(), 60 * withClass(elements, "row").size() / 2);
  expectOnTheSheet(squares(elements, "present"));
  expectOnTheSheet(squares(elements, "missing"));
}

TEST(ChartSvg, ARowHasTheNumberOfSystemsThatIsAskedFor) {
  const auto elements = drawn(chartOf(40, 3), 10);
  EXPECT_EQ(withClass(elements, "row").size(), 4U);
  EXPECT_EQ(withClass(elements, "sheet").size(), 1U);
  expectOnTheSheet(squares(elements, "present"));
  const auto all = drawn(chartOf(300, 3), 1000);
  EXPECT_GT(withClass(all, "row").size(), 1U) << "no more than fit on the sheet";
  expectOnTheSheet(squares(all, "present"));
}

TEST(ChartSvg, LabelsOfOneLineNeverOverlap) {
  const auto elements = drawn(chartOf(3000, 12));
  double end = 0;
  double line = 0;
  for (const XmlElement& number : withClass(elements, "system")) {
    if (number.number("y") != line || number.number("x") < end - 100) {
      end = 0;
      line = number.number("y");
    }
    ASSERT_GE(number.number("x"), end) << number.text;
    end = number.number("x") + 3 * widthOfText(number.text);
  }
}

TEST(ChartSvg, NamesOfInstrumentsStandLeftOfTheCells) {
  Chart chart = chartOf(30, 2);
  const double before = withClass(drawn(chart), "instrument").at(0).number("x");
  chart.names = {{101, {"Flute & Piccolo", 15, ""}}};
  const auto elements = drawn(chart);
  const auto labels = withClass(elements, "instrument");
  EXPECT_EQ(labels.at(0).text, "Flute & Piccolo 101");
  EXPECT_EQ(labels.at(1).text, "102");
  EXPECT_GT(labels.at(0).number("x"), before + 20) << "there is space for the name";
  EXPECT_GT(squares(elements, "present").at(0).x, labels.at(0).number("x"));
  expectOnTheSheet(squares(elements, "present"));
}

TEST(ChartSvg, ALongNameIsCutAndShownInFullByTheBrowser) {
  Chart chart = chartOf(1, 1);
  const std::string name = "Contrabassoon <in B flat>, and much more than fits beside the cells of a chart";
  chart.names = {{101, {"Contrabassoon <in...", 20, name}}};
  const auto elements = drawn(chart);
  const std::string label = withClass(elements, "instrument").at(0).text;
  EXPECT_TRUE(label.starts_with("Contrabassoon <in B")) << label;
  EXPECT_TRUE(label.ends_with("\xE2\x80\xA6 101")) << label;
  EXPECT_EQ(withTag(elements, "title").at(1).text, name + " 101");
  EXPECT_LE(3 * widthOfText(label), 48 + 16) << "inside the margin, whatever its letters";
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
  const auto elements = drawn(chart);
  EXPECT_EQ(withClass(elements, "pagename").at(0).text, "\xE2\x80\xA6\xC3\xA4" + std::string("BCDEFGHIJ012345"))
      << "no half of a character";
  EXPECT_EQ(withTag(elements, "title").at(1).text, std::string(40, 'X') + "\xC3\xA4" + "BCDEFGHIJ012345");
}

TEST(ChartSvg, AnEmptyChartIsADrawing) {
  EXPECT_EQ(drawn(Chart()).at(0)["height"], "793");
}

}  // namespace
}  // namespace kiv::test
