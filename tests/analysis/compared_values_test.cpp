#include <functional>
#include <vector>

#include <gtest/gtest.h>

#include "analysis/first_clef_table.h"
#include "analysis/page_checks.h"
#include "analysis/page_table.h"
#include "analysis/report_index.h"
#include "analysis/verdict.h"
#include "tests/support/differing_members.h"

namespace kiv::test {
namespace {

// Tests compare these values as a whole, so a comparison that forgot a member would hide what is wrong with it.

TEST(ComparedValues, ProblemsOfAPageDifferInEachCountListAndPlace) {
  const std::vector<std::function<void(PageProblems&)>> changes = {
      [](PageProblems& problems) { problems.dupIdCount = 1; },
      [](PageProblems& problems) { problems.dupStaffCount = 1; },
      [](PageProblems& problems) { problems.recursiveCueCount = 1; },
      [](PageProblems& problems) { problems.zeroIdCount = 1; },
      [](PageProblems& problems) { problems.undefinedCueCount = 1; },
      [](PageProblems& problems) { problems.duplicateIds = "101,"; },
      [](PageProblems& problems) { problems.duplicateStaves = "2,"; },
      [](PageProblems& problems) { problems.undefinedCues = "105 in staff 3, "; },
      [](PageProblems& problems) { problems.dupIdPlaces.emplace_back(); },
      [](PageProblems& problems) { problems.dupStaffPlaces.emplace_back(); },
      [](PageProblems& problems) { problems.zeroIdPlaces.emplace_back(); },
      [](PageProblems& problems) { problems.recursiveCuePlaces.emplace_back(); },
      [](PageProblems& problems) { problems.undefinedCuePlaces.emplace_back(); },
  };
  std::vector<PageProblems> others;
  for (const auto& change : changes) {
    others.push_back(changed(PageProblems(), change));
  }
  expectComparesEveryMember(PageProblems(), others);
}

TEST(ComparedValues, PagesDifferInNameLettersAndFolder) {
  expectComparesEveryMember(PageEntry{"X1.MUS", "AB", "C:\\M\\"},
                            {{"X2.MUS", "AB", "C:\\M\\"}, {"X1.MUS", "AC", "C:\\M\\"}, {"X1.MUS", "AB", "D:\\M\\"}});
}

TEST(ComparedValues, RecordsOfTheReportDifferInEachMember) {
  expectComparesEveryMember(StaffRecord{101, 2, 3, "X1.MUS", 4}, {{102, 2, 3, "X1.MUS", 4},
                                                                  {101, 9, 3, "X1.MUS", 4},
                                                                  {101, 2, 9, "X1.MUS", 4},
                                                                  {101, 2, 3, "X2.MUS", 4},
                                                                  {101, 2, 3, "X1.MUS", 9}});
}

TEST(ComparedValues, VerdictsDifferInEachLine) {
  expectComparesEveryMember(Verdict{"CONSISTENCY=YES", "MULTIFILE=NO"},
                            {{"CONSISTENCY=NO", "MULTIFILE=NO"}, {"CONSISTENCY=YES", "MULTIFILE=YES"}});
}

TEST(ComparedValues, FirstClefsDifferInInstrumentKindAndHeight) {
  expectComparesEveryMember(FirstClefTable::Entry{101, MarkedValue(2), -3},
                            {{102, MarkedValue(2), -3}, {101, MarkedValue(3), -3}, {101, MarkedValue(2), 0}});
}

}  // namespace
}  // namespace kiv::test
