#include <algorithm>
#include <sstream>

#include <gtest/gtest.h>

#include "drawing/chart_drawings.h"
#include "tests/drawing/charts.h"

namespace kiv::test {
namespace {

std::size_t longestLine(const std::string& text) {
  std::istringstream lines(text);
  std::size_t longest = 0;
  for (std::string line; std::getline(lines, line);) {
    longest = std::max(longest, line.size());
  }
  return longest;
}

TEST(ChartText, ShowsEveryKindOfCell) {
  const std::string report = record(1, 0, 4, "X1A.MUS") + record(1, 5, 3, "X1A.MUS") + record(1, 5, 2, "X1B.MUS") +
                             record(1, 6, 1, "X1B.MUS") + record(2, 6, 3, "X2.MUS") + record(2, 5, 2, "X2.MUS") +
                             record(3, 5, 1, "X2.MUS");
  EXPECT_EQ(chartText(chartOf(report), {}),
            "X: 3 systems on 2 pages, 3 instruments; 3 rest staves to be inserted\n"
            "\n"
            "    page  1 2\n"
            "          A\n"
            "          B\n"
            "   files  2\n"
            "  system  1 2 3\n"
            "       0 |0|. .|\n"
            "       5 |D|# #|\n"
            "       6 |#|m .|\n"
            "\n"
            "# staff\n"
            ". missing, gets a rest staff\n"
            "D several staves of one id\n"
            "0 staff without an id\n"
            "m staff that a conversion moves\n"
            "Staves in another order than in a result: system 2\n"
            "\n"
            "First page X1AB.MUS, last page X2.MUS\n");
}

/// Two instruments, of which one has a name.
Chart withAName() {
  Chart chart = chartOf(200, 2);
  chart.names = {{101, {"Fl\xC3\xB6te", 5, ""}}};
  return chart;
}

TEST(ChartText, NamesStandBeforeTheIdentifiers) {
  const std::string text = chartText(withAName(), {80, false});
  EXPECT_NE(text.find("\n     system  1 2 3"), std::string::npos) << text;
  EXPECT_NE(text.find("\nFl\xC3\xB6te   101 |#|#|"), std::string::npos) << text;
  EXPECT_NE(text.find("\n        102 |.|.|"), std::string::npos) << text;
  EXPECT_LE(longestLine(text), 81U) << "of which a character has two bytes";
}

TEST(ChartText, ANarrowTerminalHasNoNames) {
  const std::string text = chartText(withAName(), {59, false});
  EXPECT_EQ(text.find("Fl"), std::string::npos) << text;
  EXPECT_NE(text.find("\n     101 |#|#|"), std::string::npos) << text;
}

TEST(ChartText, WrapsToTheWidth) {
  const std::string text = chartText(chartOf(200, 3), {100, false});
  EXPECT_LE(longestLine(text), 100U);
  EXPECT_NE(text.find("\n     101 |#|#|"), std::string::npos);
  const std::string last = "\n  system  181 183 185";
  EXPECT_NE(text.find(last), std::string::npos) << "the fifth block of 45 begins there\n" << text;
}

TEST(ChartText, WrapsAfterTheNumberOfSystemsThatIsAskedFor) {
  const std::string text = chartText(chartOf(25, 1), {40, false, 20});
  EXPECT_NE(text.find("\n     101 |#|#|#|#|#|#|#|#|#|#|#|#|#|#|#|#|#|#|#|#|\n"), std::string::npos)
      << "however wide that is\n"
      << text;
  EXPECT_NE(text.find("\n  system  21  23"), std::string::npos) << text;
}

TEST(ChartText, WrappedRowsBeginWithANumberThatIsEasilyFound) {
  const std::string text = chartText(chartOf(60, 1), {80, false});
  EXPECT_NE(text.find("\n  system  36  38"), std::string::npos) << "35 systems fit\n" << text;
  EXPECT_NE(chartText(chartOf(60, 1), {86, false}).find("\n  system  36  38"), std::string::npos)
      << "38 systems would fit";
}

TEST(ChartText, EveryRowIsHeadedByTheNamesOfItsPages) {
  const std::string text = chartText(chartOf(12, 1), {80, false, 10});
  EXPECT_NE(text.find("\n    page                    1\n          1 2 3 4 5 6 7 8 9 0\n  system  1 2"),
            std::string::npos)
      << "PIECE1 to PIECE10, their numbers end on a line\n"
      << text;
  EXPECT_NE(text.find("\n    page  1 1\n          1 2\n  system  11\n"), std::string::npos) << text;
  EXPECT_NE(text.find("\nFirst page PIECE1.MUS, last page PIECE12.MUS\n"), std::string::npos) << text;
}

TEST(ChartText, NamesThatAreNoHeadsAreListed) {
  Chart chart = chartOf(3, 1);
  chart.pages[1].name = "PIECE" + std::string(40, '9') + ".MUS";
  chart.pages[2].name = "\xC3\x84PIECE.MUS";
  const std::string text = chartText(chart, {80, false});
  EXPECT_NE(text.find("\n    page  P ~ ?\n          I 9\n"), std::string::npos)
      << "the end of the second name, and no byte of a character\n"
      << text;
  EXPECT_NE(text.find("\nPages, in order:\nPIECE1.MUS  PIECE9999"), std::string::npos) << text;
  EXPECT_NE(text.find("9.MUS  \xC3\x84PIECE.MUS\n"), std::string::npos) << text;
}

TEST(ChartText, TheLegendListsOnlyWhatOccurs) {
  const std::string text = chartText(chartOf(3, 1), {80, false});
  EXPECT_NE(text.find("\n# staff\n\nFirst page"), std::string::npos) << text;
  EXPECT_EQ(text.find("missing"), std::string::npos) << text;
}

TEST(ChartText, ANumberNeverTouchesTheOneBeforeIt) {
  const std::string text = chartText(chartOf(12, 1), {80, false});
  EXPECT_NE(text.find("  system  1 2 3 4 5 6 7 8 9 10  12\n"), std::string::npos) << text;
}

TEST(ChartText, ANarrowTerminalStillShowsSomething) {
  for (const std::size_t width : {std::size_t{0}, std::size_t{5}, std::size_t{11}}) {
    const std::string text = chartText(chartOf(9, 2), {width, false});
    EXPECT_NE(text.find("\n     101 |#|#|#|#|#|#|#|#|\n"), std::string::npos) << text;
    EXPECT_NE(text.find("\n     101 |#|\n"), std::string::npos) << text;
  }
}

TEST(ChartText, ColorsChangeNothingElse) {
  std::string colored = chartText(chartOf(3, 2), {80, true});
  EXPECT_NE(colored.find("\x1B[32m#\x1B[0m"), std::string::npos);
  EXPECT_NE(colored.find("\x1B[33m.\x1B[0m"), std::string::npos);
  for (std::size_t escape = 0; (escape = colored.find('\x1B')) != std::string::npos;) {
    colored.erase(escape, colored.find('m', escape) + 1 - escape);
  }
  EXPECT_EQ(colored, chartText(chartOf(3, 2), {80, false}));
}

}  // namespace
}  // namespace kiv::test
