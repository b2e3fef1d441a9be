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
            "3 systems on 2 pages, 3 instruments; 3 rest staves to be inserted\n"
            "\n"
            "    page  1 2\n"
            "   files  2\n"
            "  system  1 2 3\n"
            "       0 |0|. .|\n"
            "       5 |D|# #|\n"
            "       6 |#|# .|\n"
            "\n"
            "# staff\n"
            ". missing, gets a rest staff\n"
            "D several staves of one id\n"
            "0 staff without an id\n"
            "Staves in another order than in a result: system 2\n"
            "\n"
            "1 X1AB.MUS  2 X2.MUS\n");
}

/// Two instruments, of which one has a name.
Chart withAName() {
  Chart chart = chartOf(200, 2);
  chart.names = {{101, {"Fl\xC3\xB6te", 5}}};
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
