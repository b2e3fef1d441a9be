#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagnostics/layouts.h"
#include "diagnostics/planned_results.h"
#include "diagnostics/problems.h"
#include "tests/diagnostics/run.h"
#include "tests/support/differing_members.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::SizeIs;

/// Messages about a page, and what is found of them in it.
class ProblemLookup : public ::testing::Test, public DiagnosedRun {
 protected:
  std::vector<Problem> problemsAt(std::vector<Location> places) {
    kiv::Message message;
    message.code = code::undefinedCue;
    message.places = std::move(places);
    return findProblems(host, {message});
  }

  const std::string file = "C:\\M\\X1.MUS";
};

TEST_F(ProblemLookup, AMessageAboutAResultIsNotLocatedInTheInput) {
  addPage("X1.MUS", "staff 1 at 0 instrument 101\n");
  for (const std::string_view code : {code::resultNotWritten, code::noStaves}) {
    kiv::Message message;
    message.code = code;
    message.location = {.file = file, .item = 1};
    const std::vector<Problem> found = findProblems(host, {message});
    ASSERT_THAT(found, SizeIs(1)) << code;
    EXPECT_EQ(found[0].code, code);
    EXPECT_EQ(found[0].file, std::nullopt) << code;
    EXPECT_EQ(found[0].place, std::nullopt) << code;
  }
}

TEST_F(ProblemLookup, ACueMarkerHasTheInstrumentThatItRefersTo) {
  addPage("X1.MUS", "staff 1 at 0 instrument 101\nnote 1 at 3\nrest 1 at 5 kind -2 cue 105\n");
  const std::vector<Problem> found = problemsAt({{.file = file, .item = 3}, {.file = file, .item = 2}});
  ASSERT_THAT(found, SizeIs(2));
  EXPECT_EQ(found[0].instrument, 105);
  EXPECT_EQ(found[0].staff, 1);
  EXPECT_EQ(found[1].instrument, std::nullopt) << "a note has none";
  EXPECT_EQ(found[1].staff, 1);
}

TEST_F(ProblemLookup, APlaceThatFollowsItselfIsCountedOnce) {
  addPage("X1.MUS", "staff 1 at 0 instrument 101\nnote 1 at 3\n");
  const std::vector<Problem> found = problemsAt({{.file = file, .item = 1, .repeats = 2},
                                                 {.file = file, .item = 1, .repeats = 3},
                                                 {.file = file, .item = 2},
                                                 {.file = file, .item = 1}});
  ASSERT_THAT(found, SizeIs(3));
  EXPECT_EQ(found[0].repeats, 5);
  EXPECT_EQ(found[1].repeats, 1);
  EXPECT_EQ(found[2].repeats, 1) << "another is between them";
}

TEST_F(ProblemLookup, AStaffThatThePageDoesNotHoldHasNoItem) {
  addPage("X1.MUS", "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\n");
  const auto itemAt = [this](double staff, double instrument) {
    return problemsAt({{.file = file, .staff = staff, .instrument = instrument}}).at(0).place;
  };
  EXPECT_EQ(itemAt(2, 102), (ItemPlace{2, 42}));
  EXPECT_EQ(itemAt(2, 101), std::nullopt);
  EXPECT_EQ(itemAt(3, 102), std::nullopt);
}

TEST_F(ProblemLookup, StavesOfOneNumberAreInTheOrderOfTheReport) {
  addPage("X1.MUS", "staff 1 at 9 instrument 101\nstaff 1 at 0 p4 4 instrument 101\nstaff 1 at 0 instrument 101\n");
  EXPECT_EQ(problemsAt({{.file = file, .staff = 1, .instrument = 101}}).at(0).place, (ItemPlace{3, 82}));
}

TEST_F(ProblemLookup, StavesOfAPageWithoutAnOrderStayInTheOrderOfTheFile) {
  addPage("X1.MUS", "staff 1 at 9 instrument 101\nstaff 1 at 0 instrument 101\nstaff 1 at 0x7FC00000 instrument 102\n");
  EXPECT_EQ(problemsAt({{.file = file, .staff = 1, .instrument = 101}}).at(0).place, (ItemPlace{1, 2}));
}

TEST(DeviationKinds, HaveNames) {
  EXPECT_STREQ(nameOf(DeviationKind::missing), "missing");
  EXPECT_STREQ(nameOf(DeviationKind::extra), "extra");
  EXPECT_STREQ(nameOf(DeviationKind::moved), "moved");
  EXPECT_STREQ(nameOf(DeviationKind::duplicate), "duplicate");
}

// Tests compare these values as a whole, so a comparison that forgot a member would hide what is wrong with it.

TEST(ComparedDiagnostics, DeviationsDifferInEachMember) {
  const Deviation deviation{DeviationKind::extra, 101, 2, 0, 3.0, ItemPlace{4, 82}};
  expectComparesEveryMember(
      deviation,
      {changed(deviation, [](Deviation& d) { d.kind = DeviationKind::moved; }),
       changed(deviation, [](Deviation& d) { d.instrument = 102; }),
       changed(deviation, [](Deviation& d) { d.system = 1; }), changed(deviation, [](Deviation& d) { d.file = 1; }),
       changed(deviation, [](Deviation& d) { d.staff = 1; }), changed(deviation, [](Deviation& d) {
         d.place = ItemPlace{4, 2};
       })});
}

TEST(ComparedDiagnostics, PlacesAndEditsAndPlannedStavesDifferInEachMember) {
  expectComparesEveryMember(ItemPlace{1, 2}, {{9, 2}, {1, 9}});
  expectComparesEveryMember(
      LayoutEdit{DeviationKind::extra, 101, 2},
      {{DeviationKind::moved, 101, 2}, {DeviationKind::extra, 102, 2}, {DeviationKind::extra, 101, 3}});
  expectComparesEveryMember(PlannedStaff{1, 101, false}, {{2, 101, false}, {1, 102, false}, {1, 101, true}});
}

}  // namespace
}  // namespace kiv::test
