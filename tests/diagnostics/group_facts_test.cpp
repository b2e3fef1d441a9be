#include "diagnostics/group_facts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagnostics/page_lookup.h"
#include "messages/warnings.h"
#include "tests/diagnostics/reported_systems.h"
#include "tests/diagnostics/run.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

using ::testing::IsEmpty;
using ::testing::IsNull;
using ::testing::Not;
using ::testing::NotNull;

/// What an analysis lets its observer know, against what it leaves in the report and what the pages hold.
class GroupFactsOf : public ::testing::Test, public DiagnosedRun {
 protected:
  void addOrdinaryPages() {
    addPage("X1.MUS",
            "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument -102\nbarline 1 at 0 spans 2\nnote 7 at 5\n");
    addPage("X2A.MUS", "staff 1 at 0 instrument 103\n");
    addPage("X2B.MUS", "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n");
  }
  PageLosses lossesIn(const std::string& file, LossScan scan) {
    return findPageLosses(file, readWhole(host, file).value(), scan);
  }

  const std::string firstFile = "C:\\M\\X1.MUS";
};

void expectEqual(const PageLosses& a, const PageLosses& b) {
  EXPECT_EQ(a.ofAnalysis, b.ofAnalysis);
  EXPECT_EQ(a.hiddenStaves, b.hiddenStaves);
  EXPECT_EQ(a.looseItems, b.looseItems);
}

TEST_F(GroupFactsOf, TheSystemsAreThoseOfTheReport) {
  addOrdinaryPages();
  listFile("X1.MUS");
  run();
  EXPECT_THAT(systems(), Not(IsEmpty()));
  EXPECT_EQ(systems(), reportedSystems(host));
}

TEST_F(GroupFactsOf, TheSystemsOfAnyPageAreThoseOfTheReport) {
  RandomGenerator random(11);
  const std::vector<std::string> numbers = {"0", "1", "2", "3", "-2", "1.5", "0.1", "12345.678", "1.0000001", "300"};
  const auto any = [&] { return numbers[random.below(static_cast<std::uint32_t>(numbers.size()))]; };
  int analyzed = 0;
  for (int round = 0; round < 400; ++round) {
    DiagnosedRun one;
    for (int page = 1; page <= 2; ++page) {
      std::string text = "staff 1 at 0 instrument 7\nbarline 1 at 0 spans 2\n";
      for (std::uint32_t staff = random.below(4); staff > 0; --staff) {
        text += "staff " + any() + " at " + any() + " instrument " + any() + " p18 " + any() + "\n";
      }
      one.addPage("X" + std::to_string(page) + ".MUS", text);
    }
    one.run(true);
    if (!one.end) {
      EXPECT_EQ(one.systems(), reportedSystems(one.host)) << round;
      ++analyzed;
    }
  }
  EXPECT_GT(analyzed, 100);
}

TEST_F(GroupFactsOf, TheSystemsOfAPageWithAFileTwiceAreThoseOfTheReport) {
  addPage("X2A.MUS", "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  addPage("X2B.MUS", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n");
  listFile("X2A.MUS");
  run();
  ASSERT_EQ(group->systemCount(), 1U);
  EXPECT_EQ(systems(), reportedSystems(host));
}

TEST_F(GroupFactsOf, TheStavesThatAreKnownAreThoseOfThePages) {
  RandomGenerator random(12);
  const std::vector<std::string> numbers = {"0", "1", "2", "2", "3", "4", "1.0000001", "-2", "12345678"};
  const auto any = [&] { return numbers[random.below(static_cast<std::uint32_t>(numbers.size()))]; };
  int known = 0;
  for (int round = 0; round < 600; ++round) {
    DiagnosedRun one;
    std::string text = "staff 1 at 10 instrument 7\ntext 1 at 2 \" Flute \"\nbarline 1 at 0 spans 2\n";
    for (std::uint32_t item = random.below(6); item > 0; --item) {
      text += "staff " + any() + " at " + any() + " instrument " + any() + "\ntext " + any() + " at " + any() +
              " \"Oboe " + any() + "\"\n";
    }
    one.addPage("X1.MUS", text);
    one.listFile(random.below(8) == 0 ? "X1.MUS" : "X2.MUS");
    one.host.addFile("C:\\M\\X2.MUS", page(text));
    one.run(true);
    for (const SystemFact& system : one.systems()) {
      for (const StaffFact& fact : system.staves) {
        if (const auto staff = one.group->staff(fact)) {
          ++known;
          const auto ofPage = PageLookup(one.host).staff(fact);
          ASSERT_TRUE(ofPage) << text;
          EXPECT_EQ(staff->place, ofPage->place) << text;
          EXPECT_EQ(staff->name, ofPage->name) << text;
        }
      }
    }
  }
  EXPECT_GT(known, 500);
}

TEST_F(GroupFactsOf, AStaffThatIsNotAloneWithItsNumberIsNotKnown) {
  addPage("X1.MUS",
          "staff 2 at 9 instrument 102\nstaff 2 at 0 instrument 102\nstaff 1 at 0 instrument 101\nbarline 1 at 0 "
          "spans 2\n");
  run();
  const std::string name = firstFile;
  EXPECT_FALSE(group->staff({102, "102", "2", "2", name}));
  EXPECT_TRUE(group->staff({101, "101", "1", "1", name}));
  EXPECT_FALSE(group->staff({101, "101", "1", "1", name, 2})) << "the second one of its kind";
  EXPECT_FALSE(group->staff({101, "101", "1", "1", "C:\\M\\X9.MUS"}));
}

TEST_F(GroupFactsOf, AVeryLongNameIsLeftToThePage) {
  addPage("X1.MUS", "staff 1 at 10 instrument 101\ntext 1 at 2 \"" + std::string(200, 'x') + "\"\n");
  run();
  EXPECT_FALSE(group->staff({101, "101", "1", "1", firstFile}));
  EXPECT_EQ(PageLookup(host, &*group).staff({101, "101", "1", "1", firstFile}).value().name, std::string(200, 'x'));
}

TEST_F(GroupFactsOf, TheLossesOfAllItemsAreKnownOnceThePagesNeedAConversion) {
  const std::string flute = "staff 1 at 0 instrument 101\nnote 7 at 5\n";
  const std::string oboe = "staff 1 at 0 instrument 102\nnote 7 at 5\nnote 8 at 5\nnote 7 at 6\n";
  addPage("X1.MUS", flute);
  addPage("X2.MUS", flute);
  addPage("X3.MUS", oboe);
  addPage("X4.MUS", oboe);
  run(false, {false, LossScan::staves});
  EXPECT_THAT(group->lossesOf("C:\\M\\X3.MUS", LossScan::allItems), IsNull()) << "the first that differs";
  const std::string last = "C:\\M\\X4.MUS";
  ASSERT_THAT(group->lossesOf(last, LossScan::allItems), NotNull());
  expectEqual(*group->lossesOf(last, LossScan::allItems), lossesIn(last, LossScan::allItems));
  EXPECT_EQ(group->lossesOf(last, LossScan::allItems)->looseItems.size(), 2U);
  EXPECT_THAT(group->lossesOf(last, LossScan::staves), NotNull());
}

TEST_F(GroupFactsOf, ItemsOnNoStaffAreCountedByStaffWhereverTheyStand) {
  addPage("X1.MUS",
          "note 7 at 5\nnote 8 at 5\nrest 7 at 6\nstaff 1 at 0 instrument 101\nnote 7 at 7\nnote 0 at 1\nnote -0 at "
          "2\ntext 8 at 1 \"a\"\n");
  const PageLosses losses = lossesIn(firstFile, LossScan::allItems);
  EXPECT_EQ(losses.looseItems,
            (std::vector<kiv::Message>{messages::itemsOnNoStaff(3, 7, {.file = firstFile, .item = 1}),
                                       messages::itemsOnNoStaff(2, 8, {.file = firstFile, .item = 2}),
                                       messages::itemsOnNoStaff(2, 0, {.file = firstFile, .item = 6})}));
}

TEST_F(GroupFactsOf, ItemsThatTheAnalysisSkipsAreCountedWhileItSkipsThem) {
  const std::string other = "C:\\M\\X2.MUS";
  addPage("X1.MUS",
          "note 7 at 5\nnote 8 at 5\nrest 7 at 6\nstaff 1 at 0 instrument 101\nnote 7 at 7\nnote 0 at 1\ntext 8 at 1 "
          "\"a\"\nnote 8 at 9\nnote 8 at 9\nclef 8 at 9\nstaff 2 at 0 lines -1 instrument 102\nnote 2 at 4\n");
  addPage("X2.MUS", "staff 1 at 0 instrument 101\nnote 1 at 5\nnote 8 at 5\n");
  run(false, {true, LossScan::allItems});
  for (const std::string& file : {firstFile, other}) {
    ASSERT_THAT(group->lossesOf(file, LossScan::allItems), NotNull());
    expectEqual(*group->lossesOf(file, LossScan::allItems), lossesIn(file, LossScan::allItems));
    EXPECT_EQ(group->lossesOf(file, LossScan::allItems)->ofWriting, lossesIn(file, LossScan::allItems).ofWriting);
  }
  EXPECT_EQ(group->lossesOf(other, LossScan::allItems)->looseItems,
            std::vector<kiv::Message>{messages::itemsOnNoStaff(1, 8, {.file = other, .item = 3})});
}

TEST_F(GroupFactsOf, TheLossesOfAFileThatEndsTheRunAreNotKnown) {
  addPage("X1.MUS", "staff 1 at 0 instrument 101\nnote 7 at 5\n");
  addPage("X2.MUS", "staff 40000 at 0 instrument 101\nnote 7 at 5\n");
  run(true, {false, LossScan::allItems});
  ASSERT_TRUE(end);
  EXPECT_THAT(group->lossesOf(firstFile, LossScan::staves), NotNull());
  EXPECT_THAT(group->lossesOf("C:\\M\\X2.MUS", LossScan::staves), IsNull());
}

TEST_F(GroupFactsOf, NoPageIsReadForThem) {
  addOrdinaryPages();
  run(false, {true, LossScan::allItems});
  const int read = host.timesRead(firstFile);
  EXPECT_THAT(systems(), Not(IsEmpty()));
  EXPECT_THAT(group->instruments(), Not(IsEmpty()));
  EXPECT_THAT(group->lossesOf(firstFile, LossScan::allItems), NotNull());
  EXPECT_EQ(host.timesRead(firstFile), read);
}

TEST_F(GroupFactsOf, TheLossesAreThoseOfThePages) {
  addOrdinaryPages();
  run(false, {false, LossScan::allItems});
  expectEqual(*group->lossesOf(firstFile, LossScan::allItems), lossesIn(firstFile, LossScan::allItems));
  EXPECT_THAT(group->lossesOf(firstFile, LossScan::allItems)->looseItems, Not(IsEmpty()));
  run(false, {false, LossScan::staves});
  expectEqual(*group->lossesOf(firstFile, LossScan::staves), lossesIn(firstFile, LossScan::staves));
  EXPECT_THAT(group->lossesOf(firstFile, LossScan::staves)->ofAnalysis, Not(IsEmpty()));
}

TEST_F(GroupFactsOf, HiddenBottomStavesAreFoundWithTheBarlinesBesideThem) {
  addPage("X1.MUS",
          "barline 1 at 0 spans 3\nstaff 1 at 0 lines -1\nstaff 2 at 0 instrument 102\nstaff 3 at 0 instrument 101\n");
  run();
  EXPECT_EQ(group->lossesOf(firstFile, LossScan::staves)->hiddenStaves.size(), 1U);
}

TEST_F(GroupFactsOf, LossesThatWereNotWantedAreNotKnown) {
  addOrdinaryPages();
  run(false, {false, LossScan::staves});
  EXPECT_THAT(group->lossesOf(firstFile, LossScan::allItems), IsNull());
  EXPECT_THAT(group->lossesOf("C:\\M\\X9.MUS", LossScan::staves), IsNull());
  run(false, {});
  EXPECT_THAT(group->lossesOf(firstFile, LossScan::staves), IsNull());
}

}  // namespace
}  // namespace kiv::test
