#include "repair/group_evidence.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/report.h"
#include "tests/support/odd_file.h"

namespace kiv::test {
namespace {

using ::testing::IsEmpty;
using ::testing::SizeIs;

/// A report that is read in several pieces.
std::string longReport() {
  std::string report;
  for (int system = 1; system <= 3000; ++system) {
    report += "SYSTEM=" + std::to_string(system) + ",INSTRID=7,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\P1.MUS\r\n";
  }
  return report;
}

TEST(GroupEvidence, IsOfAllSystemsOfTheReport) {
  HostWithOddFile host(reportFile, {longReport()});
  EXPECT_THAT(gatherEvidence(host), SizeIs(3000));
}

TEST(GroupEvidence, OfAReportThatCannotBeReadToItsEndIsNone) {
  HostWithOddFile host(reportFile, {longReport(), std::nullopt, 1});
  EXPECT_THAT(gatherEvidence(host), IsEmpty());
}

}  // namespace
}  // namespace kiv::test
