#include "verify/compare_report.h"

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "verify/text_lines.h"

namespace kiv::test {
namespace {

const std::string headLine = "* KivSystem - v1.0.0.0   03-07-1994   12:00:00\r\n";
const std::string pageList = "* P1.MUS\r\n* P2.MUS\r\n* =====\r\n";
const std::string recordLines = "SYSTEM=1\r\nSYSTEM=2\r\nSYSTEM=3\r\nSYSTEM=4\r\nSYSTEM=5\r\n* =====\r\n";

/// The report that these bytes make, compared with the derived one above.
class ReportComparisonTest : public ::testing::Test {
 protected:
  std::string findings(const std::string& found) {
    host.addFile("R.TXT", found);
    proof::FoundReport report(host, "R.TXT");
    proof::ReportComparison comparison(report);
    const std::string derived = "* KivSystem - \r\n" + pageList + recordLines;
    for (const std::string_view line : proof::linesOf(derived)) {
      comparison.expect(line);
    }
    comparison.finish();
    EXPECT_EQ(report.error(), "");
    EXPECT_EQ(report.hexDigest(), sha256(found));
    std::string text;
    for (const proof::Finding& finding : comparison.findings("R.TXT")) {
      text += finding.what + "\n";
    }
    return text;
  }
  /// The bytes with one text in them replaced.
  static std::string replaced(std::string bytes, const std::string& text, const std::string& by) {
    return bytes.replace(bytes.find(text), text.size(), by);
  }

  FakeHost host;
  const std::string same = headLine + pageList + recordLines;
};

constexpr const char* otherEnds = "ends its lines otherwise than an analysis does\n";

TEST_F(ReportComparisonTest, TheSameReportHasNoFindings) {
  EXPECT_EQ(findings(same), "");
}

TEST_F(ReportComparisonTest, EveryLineMustEndAsItDoes) {
  EXPECT_EQ(findings(same.substr(0, same.size() - 2)), otherEnds) << "the last one has no end";
  EXPECT_EQ(findings(same.substr(0, same.size() - 1)), otherEnds) << "the last one ends with CR";
  EXPECT_EQ(findings(replaced(same, "\r\n", "\n")), otherEnds) << "the first one";
  EXPECT_EQ(findings(replaced(same, "2\r\n", "2\r")), otherEnds) << "one in the middle";
}

TEST_F(ReportComparisonTest, AnEmptyLineMoreIsALine) {
  EXPECT_EQ(findings(same + "\n"), "line 11 is \"\"; by an analysis of the inputs it is missing\n");
  EXPECT_EQ(findings(same.substr(0, same.size() - 2) + "\n\r"),
            "line 11 is \"\"; by an analysis of the inputs it is missing\n");
}

TEST_F(ReportComparisonTest, AReportWithoutAHeadBeginsOtherwise) {
  EXPECT_EQ(findings(""), "does not begin as a report does\n");
  EXPECT_EQ(findings(pageList + recordLines), "does not begin as a report does\n");
  EXPECT_EQ(findings("\r\n" + same), "does not begin as a report does\n");
}

TEST_F(ReportComparisonTest, UpToThreeLinesThatDifferAreNamed) {
  EXPECT_EQ(findings(replaced(replaced(same, "=2", "=7"), "=4", "=8")),
            "line 6 is \"SYSTEM=7\"; by an analysis of the inputs it is \"SYSTEM=2\"\n"
            "line 8 is \"SYSTEM=8\"; by an analysis of the inputs it is \"SYSTEM=4\"\n");
  EXPECT_EQ(findings(headLine + pageList + "SYSTEM=1\r\nSYSTEM=2\r\nSYSTEM=3\r\nSYST"),
            "line 8 is \"SYST\"; by an analysis of the inputs it is \"SYSTEM=4\"\n"
            "line 9 is missing; by an analysis of the inputs it is \"SYSTEM=5\"\n"
            "line 10 is missing; by an analysis of the inputs it is \"* =====\"\n");
}

TEST_F(ReportComparisonTest, OfMoreLinesThatDifferOneIsNamed) {
  EXPECT_EQ(findings(headLine + pageList),
            "is not that of these pages as they are now: 6 lines differ, of which line 5 is missing; by an analysis of "
            "the inputs it is \"SYSTEM=1\"\n");
  EXPECT_EQ(findings(same + "1\r2\r3\r4\r"),
            "is not that of these pages as they are now: 4 lines differ, of which line 11 is \"1\"; by an analysis of "
            "the inputs it is missing\n");
}

TEST_F(ReportComparisonTest, AnotherListOfPagesIsThatOfOtherPages) {
  EXPECT_EQ(findings(replaced(same, "P2.MUS", "P3.MUS")),
            "is the report of other pages: line 3 is \"* P3.MUS\"; by an analysis of the inputs it is \"* P2.MUS\"\n");
  EXPECT_EQ(findings(replaced(same, "* =====\r\n", "* P3.MUS\r\n* =====\r\n")),
            "is the report of other pages: line 4 is \"* P3.MUS\"; by an analysis of the inputs it is \"* =====\"\n");
  EXPECT_EQ(findings(headLine + "* P1.MUS\r\n"),
            "is not that of these pages as they are now: 8 lines differ, of which line 3 is missing; by an analysis of "
            "the inputs it is \"* P2.MUS\"\n")
      << "a list without an end may be cut off";
}

TEST_F(ReportComparisonTest, LinesOfAnyLengthAreCompared) {
  const std::string longLine(200000, 'x');
  EXPECT_EQ(findings(replaced(same, "SYSTEM=5", longLine)),
            "line 9 is \"" + longLine + "\"; by an analysis of the inputs it is \"SYSTEM=5\"\n");
}

TEST_F(ReportComparisonTest, AReportThatIsMissingHasNoLines) {
  proof::FoundReport report(host, "NONE.TXT");
  EXPECT_EQ(report.nextLine(), std::nullopt);
  EXPECT_EQ(report.error(), "cannot be read");
}

}  // namespace
}  // namespace kiv::test
