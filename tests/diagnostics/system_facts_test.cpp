#include "diagnostics/system_facts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/report.h"
#include "tests/support/odd_file.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A record of a report.
std::string staffRecord(int system, int instrument, int staff, const std::string& file) {
  return "SYSTEM=" + std::to_string(system) + ",INSTRID=" + std::to_string(instrument) +
         ",NEWSTAFF=1,STAVESUP=1,STAFF=" + std::to_string(staff) + ",FILE=" + file + "\r\n";
}

/// The staff of such a record.
StaffFact staffOf(int instrument, int staff, const std::string& file, int occurrence = 1) {
  return {
      static_cast<std::int16_t>(instrument), std::to_string(instrument), "1", std::to_string(staff), file, occurrence};
}

/// The systems of a report, as they are given one by one.
class SystemFactsTest : public ::testing::Test {
 protected:
  std::vector<SystemFact> systems(const std::string& report) {
    host.addFile(reportFile, report);
    std::vector<SystemFact> given;
    EXPECT_TRUE(forEachSystemFact(host, [&](const SystemFact& system) { given.push_back(system); }));
    return given;
  }

  FakeHost host;
};

TEST_F(SystemFactsTest, SystemsAreGivenInTheOrderOfThePages) {
  EXPECT_THAT(systems("* P1\r\n" + staffRecord(1, 7, 2, "P1") + staffRecord(1, 8, 1, "P1") +
                      staffRecord(2, 7, 1, "P2") + staffRecord(4, 8, 1, "P3")),
              ElementsAre(SystemFact{1, {staffOf(7, 2, "P1"), staffOf(8, 1, "P1")}},
                          SystemFact{2, {staffOf(7, 1, "P2")}}, SystemFact{4, {staffOf(8, 1, "P3")}}));
}

TEST_F(SystemFactsTest, StavesAreCountedFromSystemToSystemOfAFile) {
  EXPECT_THAT(systems(staffRecord(1, 7, 1, "P1") + staffRecord(2, 7, 1, "P1") + staffRecord(3, 7, 1, "P2") +
                      staffRecord(4, 7, 1, "P2")),
              ElementsAre(SystemFact{1, {staffOf(7, 1, "P1")}}, SystemFact{2, {staffOf(7, 1, "P1", 2)}},
                          SystemFact{3, {staffOf(7, 1, "P2")}}, SystemFact{4, {staffOf(7, 1, "P2", 2)}}));
}

TEST_F(SystemFactsTest, ASystemMayHaveStavesInSeveralPlaces) {
  EXPECT_THAT(
      systems(staffRecord(1, 7, 1, "P1") + staffRecord(2, 7, 1, "P2") + staffRecord(1, 8, 1, "P3")),
      ElementsAre(SystemFact{1, {staffOf(7, 1, "P1"), staffOf(8, 1, "P3")}}, SystemFact{2, {staffOf(7, 1, "P2")}}));
}

TEST_F(SystemFactsTest, AFileMayBeListedInSeveralPlaces) {
  EXPECT_THAT(systems(staffRecord(1, 7, 1, "P1") + staffRecord(2, 7, 1, "P2") + staffRecord(3, 7, 1, "P1")),
              ElementsAre(SystemFact{1, {staffOf(7, 1, "P1")}}, SystemFact{2, {staffOf(7, 1, "P2")}},
                          SystemFact{3, {staffOf(7, 1, "P1", 2)}}));
}

TEST_F(SystemFactsTest, ARecordWithoutWholeNumbersIsSkipped) {
  EXPECT_THAT(systems("SYSTEM=x,INSTRID=7,FILE=P1\r\nSYSTEM=1,INSTRID=40000,FILE=P1\r\n" + staffRecord(1, 7, 1, "P1")),
              ElementsAre(SystemFact{1, {staffOf(7, 1, "P1")}}));
}

TEST_F(SystemFactsTest, WithoutAReportThereAreNone) {
  EXPECT_THAT(systems(""), IsEmpty());
  host.deleteFile(reportFile);
  EXPECT_TRUE(forEachSystemFact(host, [](const SystemFact&) { FAIL(); }));
}

TEST(SystemFacts, OfAReportThatCannotBeReadToItsEndDoNotCount) {
  std::string report;
  for (int system = 1; system <= 3000; ++system) {
    report += staffRecord(system, 7, 1, "P" + std::to_string(system));
  }
  HostWithOddFile host(reportFile, {report, std::nullopt, 1});
  int given = 0;
  EXPECT_FALSE(forEachSystemFact(host, [&](const SystemFact&) { ++given; }));
  EXPECT_GT(given, 0);
  EXPECT_LT(given, 3000);
}

}  // namespace
}  // namespace kiv::test
