#include "report_page/report_verdict.h"

#include <gtest/gtest.h>

#include "diagnostics/problem_texts.h"
#include "messages/codes.h"

namespace kiv::report::test {
namespace {

ReportData groupOf(std::size_t systems, std::size_t deviating = 0) {
  ReportData data;
  data.pages = 1;
  data.systems = systems;
  data.deviating = deviating;
  return data;
}

TEST(ReportVerdict, APageWithoutASystemIsNotReadyForUse) {
  ReportData data = groupOf(0);
  addVerdict({}, data);
  EXPECT_EQ(data.kind, VerdictKind::hasProblems);
  EXPECT_EQ(data.headline, "There is no system on the page");
  data = groupOf(0);
  data.pages = 2;
  addVerdict({}, data);
  EXPECT_EQ(data.headline, "There is no system on the pages");
}

TEST(ReportVerdict, EqualSystemsAreReadyForUse) {
  ReportData data = groupOf(3);
  addVerdict({}, data);
  EXPECT_EQ(data.kind, VerdictKind::usable);
  EXPECT_EQ(data.details, "All 3 systems have the same instruments in the same order.");
}

TEST(ReportVerdict, CountsTheWarningsAboutResults) {
  ReportData data = groupOf(3, 1);
  data.hasResults = true;
  data.problems.push_back({&problemTextOf(code::barRestLength), true, {{1, "bar 1"}, {2, "bar 1"}}});
  addVerdict({}, data);
  EXPECT_EQ(data.kind, VerdictKind::converted);
  EXPECT_TRUE(data.details.ends_with(" 2 warnings are listed under Problems.")) << data.details;
}

TEST(ReportVerdict, ConversionInTheWindowNeedsNoOtherAnalysis) {
  ReportRequest request;
  ReportData data = groupOf(3, 1);
  addVerdict(request, data);
  EXPECT_EQ(data.next.panel.size(), 2U);
  request.isForPanel = true;
  data = groupOf(3, 1);
  addVerdict(request, data);
  ASSERT_EQ(data.next.panel.size(), 1U);
  EXPECT_TRUE(data.next.panel[0].starts_with("Press Convert in the KivSystem window."));
  EXPECT_TRUE(data.next.isForPanel);
}

}  // namespace
}  // namespace kiv::report::test
