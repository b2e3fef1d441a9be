#include "diagnostics/system_facts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "analysis/report.h"
#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A record of a report.
std::string staffRecord(int system, int instrument, int staff, const std::string& file) {
  return "SYSTEM=" + std::to_string(system) + ",INSTRID=" + std::to_string(instrument) +
         ",NEWSTAFF=1,STAVESUP=1,STAFF=" + std::to_string(staff) + ",FILE=" + file + "\r\n";
}

class SystemFactsTest : public ::testing::Test {
 protected:
  /// The systems as they are given one by one; they must be those that are read at once.
  std::vector<SystemFact> systems(const std::string& report) {
    host.addFile(reportFile, report);
    std::vector<SystemFact> given;
    EXPECT_TRUE(forEachSystemFact(host, [&](const SystemFact& system) { given.push_back(system); }));
    EXPECT_EQ(given, readSystemFacts(host));
    return given;
  }
  static std::vector<int> numbers(const std::vector<SystemFact>& systems) {
    std::vector<int> all;
    for (const SystemFact& system : systems) {
      all.push_back(system.number);
    }
    return all;
  }

  FakeHost host;
};

TEST_F(SystemFactsTest, SystemsAreGivenInTheOrderOfThePages) {
  const auto all = systems("* P1\r\n" + staffRecord(1, 7, 2, "P1") + staffRecord(1, 8, 1, "P1") +
                           staffRecord(2, 7, 1, "P2") + staffRecord(4, 8, 1, "P3"));
  EXPECT_THAT(numbers(all), ElementsAre(1, 2, 4));
  EXPECT_EQ(all.front().staves.size(), 2U);
}

TEST_F(SystemFactsTest, StavesAreCountedFromSystemToSystemOfAFile) {
  const auto all = systems(staffRecord(1, 7, 1, "P1") + staffRecord(2, 7, 1, "P1") + staffRecord(3, 7, 1, "P2"));
  EXPECT_EQ(all[1].staves.front().occurrence, 2);
  EXPECT_EQ(all[2].staves.front().occurrence, 1);
}

TEST_F(SystemFactsTest, ASystemMayHaveStavesInSeveralPlaces) {
  const auto all = systems(staffRecord(1, 7, 1, "P1") + staffRecord(2, 7, 1, "P2") + staffRecord(1, 8, 1, "P3"));
  EXPECT_THAT(numbers(all), ElementsAre(1, 2));
  EXPECT_EQ(all.front().staves.size(), 2U);
}

TEST_F(SystemFactsTest, AFileMayBeListedInSeveralPlaces) {
  const auto all = systems(staffRecord(1, 7, 1, "P1") + staffRecord(2, 7, 1, "P2") + staffRecord(3, 7, 1, "P1"));
  EXPECT_EQ(all[2].staves.front().occurrence, 2);
}

TEST_F(SystemFactsTest, WithoutAReportThereAreNone) {
  EXPECT_THAT(systems(""), IsEmpty());
  host.deleteFile(reportFile);
  EXPECT_TRUE(forEachSystemFact(host, [](const SystemFact&) { FAIL(); }));
}

}  // namespace
}  // namespace kiv::test
