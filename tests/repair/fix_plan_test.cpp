#include "repair/fix_plan.h"

#include <gtest/gtest.h>

namespace kiv::repair {
namespace {

using Texts = std::vector<std::string>;
using Changes = std::vector<IdChange>;

const PageId flute{1, ItemType::staff, 2, 101};
const PageId shownFlute{2, ItemType::instrumentNumber, 2, 101};
const PageId fluteCue{3, ItemType::rest, 1, 101};
const PageId unnamed{4, ItemType::staff, 1, 0};
const PageId second{5, ItemType::staff, 3, 66};
const PageId twin{6, ItemType::staff, 3, 66};

const std::vector<PageToFix> pages = {{"X1.MUS", {flute, shownFlute, fluteCue, unnamed}}, {"X2.MUS", {second, twin}}};

IdRequest request(const std::string& page, float staff, std::int16_t newId) {
  return {"list:2", page, false, staff, 0, std::nullopt, newId};
}

TEST(PlanFix, ARequestChangesOneItem) {
  IdRequest staff = request("X1.MUS", 1, 102);
  staff.oldId = 0.0F;
  const IdRequest cue{"list:3", "X1.MUS", true, 1, 3, 101.0F, 102};
  const FixPlan plan = planFix(pages, {staff, cue}, {});
  EXPECT_EQ(plan.errors, Texts{});
  EXPECT_EQ(plan.changes, (std::vector<Changes>{{{fluteCue, 102}, {unnamed, 102}}, {}}));
}

TEST(PlanFix, AMappingChangesStavesCuesAndShownNumbers) {
  const FixPlan plan = planFix(pages, {}, {{"--map 101=7", 101, 7}});
  EXPECT_EQ(plan.errors, Texts{});
  EXPECT_EQ(plan.changes, (std::vector<Changes>{{{flute, 7}, {shownFlute, 7}, {fluteCue, 7}}, {}}));
}

TEST(PlanFix, AStaffHasTheIdThatAnAnalysisCounts) {
  const PageId negative{1, ItemType::staff, 1, -102};
  const PageId fraction{2, ItemType::staff, 2, 102.25F};
  const PageId negativeCue{3, ItemType::rest, 1, -102};
  const PageId fractionCue{4, ItemType::rest, 1, 102.25F};
  const std::vector<PageToFix> counted = {{"X1.MUS", {negative, fraction, negativeCue, fractionCue}}};
  EXPECT_EQ(planFix(counted, {}, {{"--map 102=7", 102, 7}}).changes,
            (std::vector<Changes>{{{negative, 7}, {fraction, 7}, {fractionCue, 7}}}));
  EXPECT_EQ(planFix(counted, {}, {{"--map -102=7", -102, 7}}).changes,
            (std::vector<Changes>{{{negative, 7}, {negativeCue, 7}}}));
  for (const float staff : {1.0F, 2.0F}) {
    IdRequest row = request("X1.MUS", staff, 7);
    row.oldId = 102.0F;
    EXPECT_EQ(planFix(counted, {row}, {}).errors, Texts{}) << staff;
  }
}

TEST(PlanFix, MappingsDoNotSeeEachOther) {
  const FixPlan plan = planFix(pages, {}, {{"a", 101, 66}, {"b", 66, 101}});
  EXPECT_EQ(plan.errors, Texts{});
  EXPECT_EQ(plan.changes[0].front().newId, 66);
  EXPECT_EQ(plan.changes[1], (Changes{{second, 101}, {twin, 101}}));
}

TEST(PlanFix, WhatDoesNotFitIsAnError) {
  IdRequest other = request("X1.MUS", 2, 7);
  other.oldId = 102.0F;
  EXPECT_EQ(planFix(pages, {request("X9.MUS", 1, 7), request("X1.MUS", 7, 7), other, request("X2.MUS", 3, 7)},
                    {{"--map 5=6", 5, 6}})
                .errors,
            (Texts{"list:2: X9.MUS is none of the pages", "list:2: X1.MUS has no staff 7",
                   "list:2: staff 2 of X1.MUS has the id 101, not 102",
                   "list:2: X2.MUS has staff 3 more than once; name its item", "--map 5=6: no page has the id 5"}));
}

TEST(PlanFix, TheItemNumberIsThatOfOneOfTwoStaves) {
  IdRequest one = request("X2.MUS", 3, 7);
  one.item = 6;
  EXPECT_EQ(planFix(pages, {one}, {}).changes[1], (Changes{{twin, 7}}));
  one.item = 4;
  EXPECT_EQ(planFix(pages, {one}, {}).errors, (Texts{"list:2: X2.MUS has no staff 3 at item 4"}));
}

TEST(PlanFix, TwoIdsForOneItemAreAnErrorAndTheSameIdTwiceIsNone) {
  EXPECT_EQ(planFix(pages, {request("X1.MUS", 2, 7)}, {{"--map 101=8", 101, 8}}).errors,
            (Texts{"--map 101=8: list:2 gives item 1 of X1.MUS the id 7, this 8"}));
  EXPECT_EQ(planFix(pages, {request("X1.MUS", 2, 7), request("X1.MUS", 2, 7)}, {}).errors, Texts{});
}

TEST(PlanFix, AnIdThatIsRightAlreadyIsNoChange) {
  EXPECT_EQ(planFix(pages, {request("X1.MUS", 2, 101)}, {}).changes, (std::vector<Changes>{{}, {}}));
}

TEST(FixPlan, ANameOfSeveralPagesIsNone) {
  const FixPlan plan =
      planFix({{"X1.MUS", {}}, {"X1.MUS", {}}}, {{"c.csv:2", "X1.MUS", false, 1, 0, std::nullopt, 5}}, {});
  EXPECT_EQ(plan.errors, std::vector<std::string>{"c.csv:2: X1.MUS is the name of more than one page"});
}

TEST(FixPlan, RisingIdsAreTheSameIds) {
  std::string words;
  for (const IdMapping& mapping : inRisingOrder({5, 9, 7, 8}, "t")) {
    words += std::to_string(mapping.oldId) + ">" + std::to_string(mapping.newId) + " ";
  }
  EXPECT_EQ(words, "9>7 7>8 8>9 ");
}

}  // namespace
}  // namespace kiv::repair
