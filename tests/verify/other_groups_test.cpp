#include <algorithm>

#include <gtest/gtest.h>

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "tests/support/pages.h"
#include "tests/verify/converted_group.h"

namespace kiv::test {
namespace {

/// A page of one instrument with notes of this height in every bar.
std::string melody(int instrument, int height, int bars = 8) {
  std::string text = "staff 1 at 0 lines 5 instrument " + std::to_string(instrument) +
                     "\ntimesignature 1 at 5 upper 4 lower 4\nbarline 1 at 0 spans 1\n";
  for (int bar = 0; bar < bars; ++bar) {
    text += "note 1 at " + std::to_string(10 + 20 * bar) + " height " + std::to_string(height + bar) +
            "\nbarline 1 at " + std::to_string(20 + 20 * bar) + " spans 1\n";
  }
  return page(text);
}

/// A converted group, and another with other pages, or with other music in pages of the same names.
class OtherGroups : public ::testing::Test {
 protected:
  ConvertedGroup group{{{"DUO001.MUS", melody(101, 1)}, {"DUO002.MUS", melody(102, 2)}}};
  ConvertedGroup otherPages{{{"TRIO001.MUS", melody(101, 3)}, {"TRIO002.MUS", melody(102, 4)}}};
  ConvertedGroup otherMusic{{{"DUO001.MUS", melody(201, 5)}, {"DUO002.MUS", melody(202, 6)}}};

  void copyTexts(const ConvertedGroup& from) {
    group.host.addFile(reportFile, from.host.file(reportFile));
    group.host.addFile(verdictFile, from.host.file(verdictFile));
  }
  void copyResults(const ConvertedGroup& from) {
    group.replaceResult(1, from.result(1));
    group.replaceResult(2, from.result(2));
  }
};

TEST_F(OtherGroups, TheReportOfOtherPagesIsOneFinding) {
  copyTexts(otherPages);
  EXPECT_EQ(group.findings(),
            "KivSystem2.TXT: is the report of other pages: line 2 is \"* TRIO001.MUS               C:\\M\\\"; by an "
            "analysis of the inputs it is \"* DUO001.MUS                C:\\M\\\"\n");
}

TEST_F(OtherGroups, AReportOfPagesAsTheyWereIsOneFinding) {
  copyTexts(otherMusic);
  const std::string start =
      "KivSystem2.TXT: is not that of these pages as they are now: 4 lines differ, of which line 6 is ";
  const std::string findings = group.findings();
  EXPECT_EQ(findings.substr(0, start.size()), start);
  EXPECT_EQ(std::count(findings.begin(), findings.end(), '\n'), 1) << findings;
}

TEST_F(OtherGroups, ResultsOfOtherPagesAreOneFinding) {
  copyResults(otherMusic);
  EXPECT_EQ(
      group.findings(),
      "WORK0001.MUS: and the results after it have 2 of the 20 items that these pages give: the report is not that "
      "of these results\n");
}

TEST_F(OtherGroups, TheResultsOfOneSystemAreCountedAlone) {
  ConvertedGroup single(
      {{"ONE001.MUS", melody(1, 1)}, {"ONE002.MUS", page("staff 1 at 0 instrument 2\nnote 1 at 9\n")}});
  single.host.deleteFile(ConvertedGroup::resultName(2));
  EXPECT_EQ(single.findings().substr(0, 29), "WORK0002.MUS: cannot be read\n") << "most items are there";
}

TEST_F(OtherGroups, ReportAndResultsOfOtherPagesAreAFindingEach) {
  copyTexts(otherPages);
  copyResults(otherPages);
  const std::string findings = group.findings();
  EXPECT_EQ(std::count(findings.begin(), findings.end(), '\n'), 2) << findings;
}

TEST_F(OtherGroups, ResultsThatAreAllMissingAreOneFinding) {
  group.host.deleteFile(ConvertedGroup::resultName(1));
  group.host.deleteFile(ConvertedGroup::resultName(2));
  EXPECT_EQ(group.findings(), "WORK0001.MUS: cannot be read, and no result after it can\n");
}

TEST_F(OtherGroups, ANewVersionMayHaveLongerNumbers) {
  std::string report = group.host.file(reportFile);
  report.replace(report.find("- v"), report.find("   ") - report.find("- v"), "- v12.345.0.6");
  group.host.addFile(reportFile, report);
  EXPECT_EQ(group.findings(), "");
  report.insert(0, " ");
  group.host.addFile(reportFile, report);
  EXPECT_EQ(group.findings(), "KivSystem2.TXT: does not begin as a report does\n");
}

TEST_F(OtherGroups, LinesThatEndOtherwiseAreReported) {
  std::string verdict = group.host.file(verdictFile);
  verdict.erase(verdict.find('\r'), 1);
  group.host.addFile(verdictFile, verdict);
  EXPECT_EQ(group.findings(), "KivSystem1.TXT: ends its lines otherwise than an analysis does\n");
}

TEST_F(OtherGroups, AResultInTwoSpellingsIsReported) {
  group.host.folderEntries = {{"WORK0001.MUS", false}, {"work0002.mus", false}, {"WORK0002.MUS", false}};
  EXPECT_EQ(group.findings(), "WORK0002.MUS: is a result that exists in a second spelling, work0002.mus\n");
}

TEST_F(OtherGroups, AFolderMayHaveTheNameOfAResult) {
  group.host.folderEntries = {{"WORK0001.MUS", false}, {"work0001.mus", true}};
  EXPECT_EQ(group.findings(), "");
}

}  // namespace
}  // namespace kiv::test
