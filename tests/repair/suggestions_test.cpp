#include "repair/suggestions.h"

#include <algorithm>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/repair/suggested_ids.h"

namespace kiv::test {
namespace {

using ::testing::AllOf;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

TEST_F(SuggestedIds, AreNoneForAGroupInWhichNothingIsWrong) {
  addSystems(6, score);
  EXPECT_THAT(suggest().corrections, IsEmpty());
  EXPECT_THAT(suggest().undecided, IsEmpty());
}

TEST_F(SuggestedIds, AreNoneForNoGroup) {
  EXPECT_THAT(suggestIds({}).corrections, IsEmpty());
}

TEST_F(SuggestedIds, ReplaceAnIdThatIsZero) {
  addSystems(6, score);
  addSystem({101, 102, 0, 104, 105});
  ASSERT_THAT(corrections(), ElementsAre("X7.MUS 3: 0 -> 103 sure"));
  const Correction correction = suggest().corrections.front();
  EXPECT_EQ(correction.at, (DoubtfulId{"C:\\M\\X7.MUS", 7, "3", 5, false, IdProblem::zero, 0}));
  EXPECT_EQ(correction.reason, "between 102 and 104, as in 6 of 6 systems; treble clef");
}

TEST_F(SuggestedIds, ReplaceTheWrongOneOfTwoEqualIds) {
  addSystems(6, score);
  addSystem({101, 101, 103, 104, 105});
  EXPECT_THAT(corrections(), ElementsAre("X7.MUS 4: 101 -> 102 sure"));
}

TEST_F(SuggestedIds, ReplaceASlip) {
  addSystems(12, score);
  addSystem({101, 102, 103, 1044, 105});
  ASSERT_EQ(suggest().corrections.size(), 1U);
  EXPECT_EQ(suggest().corrections.front().newId, 104);
  EXPECT_EQ(suggest().corrections.front().at.problem, IdProblem::rare);
}

TEST_F(SuggestedIds, ReplaceAWholeSystemWithoutIds) {
  addSystems(6, score);
  addSystem({0, 0, 0, 0, 0});
  EXPECT_THAT(corrections(),
              ElementsAre("X7.MUS 5: 0 -> 101 sure", "X7.MUS 4: 0 -> 102 sure", "X7.MUS 3: 0 -> 103 sure",
                          "X7.MUS 2: 0 -> 104 sure", "X7.MUS 1: 0 -> 105 sure"));
}

TEST_F(SuggestedIds, ReplaceASystemInWhichEachStaffHasTheIdOfTheOneAbove) {
  addSystems(9, score);
  addSystem({101, 101, 102, 103, 104});
  EXPECT_THAT(corrections(), ElementsAre("X10.MUS 4: 101 -> 102 likely", "X10.MUS 3: 102 -> 103 likely",
                                         "X10.MUS 2: 103 -> 104 likely", "X10.MUS 1: 104 -> 105 likely"));
}

TEST_F(SuggestedIds, AnIdIsFoundOfWhichAllStavesHaveSlips) {
  for (const int slip : {1303, 13, 203, 1033, 193, 103}) {
    addSystem({101, 117, slip, 126, 140});
  }
  const auto lines = corrections();
  ASSERT_EQ(lines.size(), 5U) << ::testing::PrintToString(lines);
  EXPECT_EQ(lines.front().substr(0, 21), "X1.MUS 3: 1303 -> 103");
}

TEST_F(SuggestedIds, AnIdOfAnotherStaffIsReplacedWhenThatStaffNeedsIt) {
  addSystems(8, score);
  addSystem({102, 0, 103, 104, 105});
  const std::vector<std::string> lines = corrections();
  EXPECT_THAT(lines, ElementsAre("X9.MUS 5: 102 -> 101 likely", "X9.MUS 4: 0 -> 102 likely"))
      << "never the one without the other, so none is surer";
  EXPECT_EQ(suggest().corrections.front().at.problem, IdProblem::misplaced);
}

TEST_F(SuggestedIds, ExchangedIdsAreReplacedAmongManyThatAreEvidentlyWrong) {
  addSystems(5, score);
  addSystem({101, 103, 103, 104, 104});
  addSystem({102, 102, 103, 105, 105});
  addSystem({102, 101, 104, 104, 104});
  EXPECT_THAT(corrections(), AllOf(Contains("X8.MUS 5: 102 -> 101 likely"), Contains("X8.MUS 4: 101 -> 102 likely")));
}

TEST_F(SuggestedIds, ExchangedIdsStayWhereNothingElseIsWrong) {
  addSystems(5, score);
  addSystem({102, 101, 103, 104, 105});
  EXPECT_THAT(corrections(), IsEmpty());
}

TEST_F(SuggestedIds, AnIdIsEnoughThatASingleSystemHasInAnIrregularNumbering) {
  addSystem({17, 1203, 5, 340, 88});
  addSystems(3, {17, 0, 5, 340, 88});
  EXPECT_THAT(corrections(),
              ElementsAre("X2.MUS 4: 0 -> 1203 likely", "X3.MUS 4: 0 -> 1203 likely", "X4.MUS 4: 0 -> 1203 likely"));
}

TEST_F(SuggestedIds, TwoOfFourSystemsAreEnoughToKnowAnIdBySlips) {
  addSystem({112, 79, 186, 84, 169, 161, 131, 39, 85, 1200, 106, 1273});
  addSystem({112, 79, 186, 84, 170, 161, 131, 39, 85, 1290, 106, 173});
  addSystem({112, 79, 186, 84, 169, 161, 131, 39, 85, 120, 16, 713});
  addSystem({112, 79, 186, 84, 159, 161, 131, 39, 85, 120, 106, 173});
  EXPECT_THAT(corrections(), AllOf(Contains("X2.MUS 8: 170 -> 169 likely"), Contains("X4.MUS 8: 159 -> 169 likely")));
}

TEST_F(SuggestedIds, ARareInstrumentKeepsItsId) {
  addSystems(14, score);
  addSystem({101, 102, 103, 110, 104, 105});
  addSystems(14, score);
  EXPECT_THAT(corrections(), IsEmpty());
}

TEST_F(SuggestedIds, AStaffForTwoInstrumentsKeepsItsId) {
  addSystems(6, score);
  addSystem({101, 102, 103, 1045});
  EXPECT_THAT(corrections(), IsEmpty());
}

TEST_F(SuggestedIds, ASystemThatIsNumberedInAnotherWayKeepsItsIds) {
  addSystems(6, score);
  addSystem({201, 202, 203, 204, 205});
  EXPECT_THAT(corrections(), IsEmpty());
}

TEST_F(SuggestedIds, AreNeverSureInAPieceWithSeveralNumberings) {
  addSystems(14, score);
  addSystem({101, 102, 0, 104, 105});
  addSystem({201, 202, 203, 204, 205});
  EXPECT_THAT(corrections(), ElementsAre("X15.MUS 3: 0 -> 103 likely"));
}

TEST_F(SuggestedIds, PreferTheInstrumentThatHardlyAnySystemLacks) {
  addSystem({101, 102, 103, 105});
  addSystems(9, {101, 102, 105});
  addSystem({101, 0, 105});
  ASSERT_EQ(suggest().corrections.size(), 1U);
  EXPECT_EQ(suggest().corrections.front().newId, 102);
}

TEST_F(SuggestedIds, SystemsInAnotherOrderKeepTheirIds) {
  addSystems(6, score);
  addSystem({103, 101, 102, 105, 104});
  EXPECT_THAT(corrections(), IsEmpty());
}

TEST_F(SuggestedIds, WhatFitsNowhereStaysOpen) {
  addSystems(6, {101, 102, 0, 140, 177});
  EXPECT_THAT(corrections(), IsEmpty());
  ASSERT_EQ(suggest().undecided.size(), 6U);
  EXPECT_EQ(suggest().undecided.front().at.problem, IdProblem::zero);
  EXPECT_THAT(suggest().undecided.front().candidates, IsEmpty());
  EXPECT_EQ(suggest().undecided.front().reason, "no known instrument is missing here and fits");
}

TEST_F(SuggestedIds, WhatFitsToTwoInstrumentsStaysOpenWithBoth) {
  addSystems(6, {101, 102, 103, 104, 105});
  addSystems(3, {101, 104, 105});
  addSystem({101, 0, 104, 105});
  EXPECT_THAT(corrections(), IsEmpty());
  ASSERT_EQ(suggest().undecided.size(), 1U);
  EXPECT_THAT(suggest().undecided.front().candidates, ::testing::UnorderedElementsAre(102, 103));
}

TEST_F(SuggestedIds, AGapInARegularNumberingIsFilledButNeverSure) {
  addSystems(6, {101, 102, 0, 104, 105});
  const auto lines = corrections();
  ASSERT_EQ(lines.size(), 6U);
  EXPECT_EQ(lines.front(), "X1.MUS 3: 0 -> 103 likely");
}

TEST_F(SuggestedIds, AListOfInstrumentsNamesTheOnesThatNoStaffHas) {
  addSystems(6, {101, 102, 0, 140, 177});
  const auto lines = corrections({{101, "", ""}, {102, "", ""}, {131, "Horn", ""}, {140, "", ""}, {177, "", ""}});
  ASSERT_EQ(lines.size(), 6U);
  EXPECT_EQ(lines.front(), "X1.MUS 3: 0 -> 131 likely");
}

TEST_F(SuggestedIds, NamesLeftOfTheStavesDistinguishInstruments) {
  const std::string names = "text 3 at 1 p4 3 \"Horn\"\ntext 4 at 1 p4 3 \"Oboe\"\n";
  for (int system = 0; system < 6; ++system) {
    addSystem(score, names);
  }
  addSystems(3, {101, 104, 105});
  addSystem({101, 0, 104, 105}, "text 3 at 1 p4 3 \"Horn\"\n");
  ASSERT_EQ(suggest().corrections.size(), 1U);
  EXPECT_EQ(suggest().corrections.front().newId, 103);
  EXPECT_THAT(suggest().corrections.front().reason, ::testing::HasSubstr("named \"Horn\""));
}

TEST_F(SuggestedIds, AStaffIsNoEvidenceForItself) {
  addSystems(6, score);
  addSystem({101, 102, 0, 104, 105}, "text 3 at 1 p4 3 \"Horn\"\n");
  EXPECT_EQ(suggest().corrections.at(0).reason, "between 102 and 104, as in 6 of 6 systems; treble clef");
}

TEST_F(SuggestedIds, ShownInstrumentNumbersDistinguishInstruments) {
  addSystems(6, score);
  addSystems(3, {101, 104, 105});
  addSystem({101, 0, 104, 105}, "item 10 3 5 0 103\n");
  ASSERT_EQ(suggest().corrections.size(), 1U);
  EXPECT_EQ(suggest().corrections.front().newId, 103);
  EXPECT_THAT(suggest().corrections.front().reason, ::testing::HasSubstr("the page shows the number 103"));
}

class NeighborsWithoutIds : public SuggestedIds, public ::testing::WithParamInterface<std::vector<int>> {};

TEST_P(NeighborsWithoutIds, AreNamedByAList) {
  addSystems(6, GetParam());
  const std::vector<std::string> found = corrections(listed(score));
  EXPECT_EQ(found.size(), 6U * static_cast<std::size_t>(std::count(GetParam().begin(), GetParam().end(), 0)));
  EXPECT_THAT(found, Contains("X1.MUS 4: 0 -> 102 likely"));
  EXPECT_THAT(found, Contains("X6.MUS 3: 0 -> 103 likely"));
}

INSTANTIATE_TEST_SUITE_P(SuggestedIds, NeighborsWithoutIds,
                         ::testing::Values(std::vector<int>{101, 0, 0, 104, 105}, std::vector<int>{101, 0, 0, 0, 105},
                                           std::vector<int>{0, 0, 0, 0, 0}));

TEST_F(SuggestedIds, ACueFollowsTheStaffWhoseIdIsWrongInTheSameWay) {
  addSystems(12, score);
  addSystem({101, 102, 103, 1044, 105}, "rest 5 at 30 kind -2 cue 1044\n");
  ASSERT_EQ(suggest().corrections.size(), 2U);
  const Correction cue = suggest().corrections.front();
  EXPECT_TRUE(cue.at.isCue);
  EXPECT_EQ(cue.at.staff, "5");
  EXPECT_EQ(cue.at.problem, IdProblem::undefined);
  EXPECT_EQ(cue.newId, 104);
  EXPECT_EQ(cue.confidence, suggest().corrections.back().confidence);
}

TEST_F(SuggestedIds, ACueThatASlipExplainsIsLikely) {
  addSystems(3, score);
  addSystem(score, "rest 5 at 30 kind -2 cue 105\n");
  addSystem(score, "rest 5 at 30 kind -2 cue 1055\n");
  EXPECT_THAT(corrections(), ElementsAre("X5.MUS cue 5: 1055 -> 105 likely"));
}

TEST_F(SuggestedIds, ACueOfAnInstrumentThatIsSilentStaysOpen) {
  addSystems(3, score);
  addSystem({101, 102, 104, 105}, "rest 4 at 30 kind -2 cue 103\n");
  EXPECT_THAT(corrections(), IsEmpty());
  ASSERT_EQ(suggest().undecided.size(), 1U);
  EXPECT_TRUE(suggest().undecided.front().at.isCue);
  EXPECT_EQ(suggest().undecided.front().reason, "103 has no staff in this system");
}

TEST_F(SuggestedIds, ACueOfAStaffThatGetsItsIdBackIsRight) {
  addSystems(6, score);
  addSystem({101, 102, 0, 104, 105}, "rest 5 at 30 kind -2 cue 103\n");
  EXPECT_THAT(corrections(), ElementsAre("X7.MUS 3: 0 -> 103 sure"));
}

TEST_F(SuggestedIds, APageThatCannotBeReadAnyMoreHasOnlyItsReport) {
  addSystems(6, score);
  addSystem({101, 102, 0, 104, 105});
  run(true);
  host.deleteFile("C:\\M\\X7.MUS");
  const Suggestions found = suggestIds(gatherEvidence(host, *group));
  ASSERT_EQ(found.corrections.size(), 1U);
  EXPECT_EQ(found.corrections.front().newId, 103);
  EXPECT_EQ(found.corrections.front().at.item, 0);
}

}  // namespace
}  // namespace kiv::test
