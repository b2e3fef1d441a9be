#include "conversion/set_rest_durations.h"

#include <limits>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/conversion/set_rest_durations_fixture.h"

namespace kiv::test {
namespace {

TEST_F(SetRestDurations, EveryBarGetsARestUnderTheFirstBeatOfTheReferenceStaff) {
  fill(
      "staff 1 at 0 instrument 101\n"
      "clef 1 at 2\n"
      "note 1 at 20 height 3 duration 1\n"
      "note 1 at 30 height 4 duration 2\n"
      "rest 1 at 60 kind 1 duration 3\n"
      "staff 2 at 0 instrument 102 p20 1\n"
      "timesignature 2 at 12 upper 3 lower 4\n",
      {0, 50, 100});
  EXPECT_EQ(asText(items),
            "staff 1 at 0 instrument 101\n"
            "clef 1 at 2\n"
            "note 1 at 20 height 3 duration 1\n"
            "note 1 at 30 height 4 duration 2\n"
            "rest 1 at 60 kind 1 duration 3\n"
            "staff 2 at 0 instrument 102\n"
            "timesignature 2 at 12 upper 3 lower 4\n"
            "rest 2 at 20 kind -2 duration 3 p9 -1\n"
            "rest 2 at 60 kind -2 duration 3 p9 -1\n");
  EXPECT_EQ(end, std::nullopt);
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(SetRestDurations, BarlinesGiveOneRestLessThanThereAre) {
  const std::string system = twoStaves + fourFour + "note 1 at 10\nnote 1 at 60\nnote 1 at 110\n";
  EXPECT_EQ(added(system, {0, 50}), "rest 2 at 10 kind -2 duration 4 p9 -1\n");
  EXPECT_EQ(added(system, {0, 50, 100, 150}),
            "rest 2 at 10 kind -2 duration 4 p9 -1\nrest 2 at 60 kind -2 duration 4 p9 -1\n"
            "rest 2 at 110 kind -2 duration 4 p9 -1\n");
}

TEST_F(SetRestDurations, WithoutABarOnlyTheMarkIsRemoved) {
  const std::string unfilled = twoStaves + "note 2 at 10 p20 3\nstaff 3 at 0 instrument 102 p20 1\n";
  for (const auto& barlines : {std::vector<float>{}, std::vector<float>{50}}) {
    fill(unfilled, barlines);
    EXPECT_EQ(end, std::nullopt) << "neither beats nor time signatures are needed";
    EXPECT_EQ(asText(items),
              "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\nnote 2 at 10 p20 3\n"
              "staff 3 at 0 instrument 102 p20 1\n");
  }
}

TEST_F(SetRestDurations, RestStaffIsTheFirstOfTheInstrumentAndItsNumberCounts) {
  EXPECT_EQ(added("staff 9 at 0 instrument 101\nstaff 7 at 0 instrument 102 p20 1\nstaff 2 at 0 instrument 102 p20 1\n"
                  "timesignature 7 at 5 upper 3 lower 4\ntimesignature 2 at 6 upper 4 lower 4\n"
                  "note 2 at 9\nnote 7 at 10\nnote 9 at 30\n",
                  {0, 50}),
            "rest 7 at 30 kind -2 duration 3 p9 -1\n");
}

TEST_F(SetRestDurations, ReferenceStaffIsTheFirstUnmarkedOneInItemOrder) {
  EXPECT_EQ(added("staff 3 at 0 instrument 103 p20 1\nnote 3 at 10\nstaff 5 at 0 instrument 103\nnote 5 at 30\n"
                  "staff 1 at 0 instrument 101\nnote 1 at 20\nstaff 2 at 0 instrument 102 p20 1\n" +
                      fourFour,
                  {0, 50}),
            "rest 2 at 30 kind -2 duration 4 p9 -1\n");
}

// --- the beat ---

TEST_F(SetRestDurations, NotesAndRestsOfTheReferenceStaffAreBeatsAndNothingElseIs) {
  const std::string others = twoStaves + fourFour +
                             "clef 1 at 6\nbarline 1 at 7\nkeysignature 1 at 8\ntimesignature 1 at 9\n"
                             "item 1.5 1 10\nitem 2.5 1 11\nnote 2 at 12\nrest 2 at 13\nnote 1.0000001 at 14\n"
                             "countedtext 1 at 15 \"x\"\n";
  EXPECT_EQ(added(others + "rest 1 at 40\nnote 1 at 45\n", {0, 50}), "rest 2 at 40 kind -2 duration 4 p9 -1\n");
  EXPECT_EQ(added(others + "rest 1 at 45\nnote 1 at 40\n", {0, 50}), "rest 2 at 40 kind -2 duration 4 p9 -1\n");
  expectEnd(others, {0, 50}, "Logical error 3 in setRestDurations");
}

TEST_F(SetRestDurations, BeatIsAfterTheBarlineNotAtIt) {
  EXPECT_EQ(added(twoStaves + fourFour + "note 1 at 10\nnote 1 at 10.000001\nnote 1 at 9\n", {10, 50}),
            "rest 2 at 10.000001 kind -2 duration 4 p9 -1\n");
}

TEST_F(SetRestDurations, BarWithoutABeatUsesThatOfALaterBar) {
  EXPECT_EQ(added(twoStaves + fourFour + "note 1 at 70\n", {0, 50, 100}),
            "rest 2 at 70 kind -2 duration 4 p9 -1\nrest 2 at 70 kind -2 duration 4 p9 -1\n");
}

TEST_F(SetRestDurations, BeatMustBeLessThan999AfterTheBarline) {
  const std::string system = twoStaves + "timesignature 2 at 999 upper 4 lower 4\n";
  EXPECT_EQ(added(system + "note 1 at 1000.99994\n", {2, 50}), "rest 2 at 1000.99994 kind -2 duration 4 p9 -1\n");
  expectEnd(system + "note 1 at 1001\n", {2, 50}, "Logical error 3 in setRestDurations");
  expectEnd(system + "note 1 at 5000\n", {2, 50}, "Logical error 3 in setRestDurations");
}

TEST_F(SetRestDurations, FirstOfTwoEquallyNearBeatsGivesThePosition) {
  // Both lie 500 after the barline as singles.
  EXPECT_EQ(added(twoStaves + fourFour + "note 1 at 10.000001\nnote 1 at 10\n", {-490, 50}),
            "rest 2 at 10.000001 kind -2 duration 4 p9 -1\n");
  EXPECT_EQ(added(twoStaves + fourFour + "note 1 at 10\nnote 1 at 10.000001\n", {-490, 50}),
            "rest 2 at 10 kind -2 duration 4 p9 -1\n");
}

TEST_F(SetRestDurations, BarlineWithoutANumberForItsPositionHasNoBeat) {
  fill(twoStaves + fourFour + "note 1 at 10\n", {std::numeric_limits<float>::quiet_NaN(), 50});
  EXPECT_EQ(host.messages, std::vector{critical("Logical error 3 in setRestDurations")});
}

// --- failures ---

TEST_F(SetRestDurations, EndsTheProgramWithoutAStaffOfTheInstrument) {
  expectEnd("staff 1 at 0 instrument 101\nnote 1 at 20\nclef 2 at 0 p9 102\n", {0, 50},
            "Logical error 1 in setRestDurations");
  expectEnd("", {}, "Logical error 1 in setRestDurations");
}

TEST_F(SetRestDurations, EndsTheProgramWithoutAReferenceStaff) {
  expectEnd("staff 1 at 0 instrument 101 p20 2\nstaff 2 at 0 instrument 102 p20 1\n", {},
            "Logical error 2 in setRestDurations");
}

TEST_F(SetRestDurations, EndsTheProgramWithoutAnyTimeSignature) {
  setTime(1, -0.0F, 4);
  expectEnd(twoStaves + "note 1 at 20\n", {0, 50}, "Logical error 4 in setRestDurations");
  expectEnd(twoStaves + fourFour + "note 1 at 5\n", {0, 50}, "Logical error 4 in setRestDurations");
  expectEnd(twoStaves, {0, 50}, "Logical error 3 in setRestDurations");
}

TEST_F(SetRestDurations, EndsTheProgramOverATimeSignatureWithAZero) {
  const std::vector<std::pair<std::string, std::string>> signatures = {
      {"lower 4", "0/4"},   {"upper 4", "4/0"},           {"", "0/0"},
      {"upper -0", "0/0"},  {"upper 2.5", "2.5/0"},       {"lower 99", "0/99"},
      {"lower 98", "0/98"}, {"upper -3 lower 0", "-3/0"}, {"upper 0x7FC00000", "NAN/0"}};
  for (const auto& [numbers, shown] : signatures) {
    expectEnd(twoStaves + "timesignature 2 at 5 " + numbers + "\nnote 1 at 20\n", {0, 50}, unhandled(shown));
  }
}

TEST_F(SetRestDurations, LaterBarsFailAsTheFirst) {
  expectEnd(twoStaves + fourFour + "note 1 at 20\n", {0, 50, 100}, "Logical error 3 in setRestDurations");
  EXPECT_EQ(items.itemCount(), before + 1);
  EXPECT_EQ(items.itemPar(2, par::mark), 1);
  expectEnd(twoStaves + fourFour + "timesignature 2 at 55 upper 3\nnote 1 at 20\nnote 1 at 60\n", {0, 50, 100},
            unhandled("3/0"));
}

TEST_F(SetRestDurations, TableThatOverflowsEndsTheProgram) {
  items = tableOf(host, twoStaves + fourFour + "note 1 at 20\n");
  while (items.itemCount() < itemLimit - 1) {
    items.store_item(Item(ItemType::clef, 1, 0));
  }
  end = endOf(host, [&] { setRestDurations(items, 102, order, {{0, 0}, {10, 0}, {15, 0}}); });
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("MUS file too big for operation. Hit OK to terminate.")});
  EXPECT_EQ(items.itemCount(), itemLimit);
}

TEST_F(SetRestDurations, RowsLeftBeyondTheTableNeitherCountNorShowThrough) {
  items = tableOf(host,
                  "clef 1 at 1\nclef 1 at 1\nclef 1 at 1\nclef 1 at 1\ncountedtext 2 at 1 p4 5 p6 6 p8 8 \"old\"\n"
                  "note 1 at 11\ntimesignature 2 at 10 upper 9 lower 4\nstaff 2 at 0 instrument 103\n");
  const ItemTable system = tableOf(host, twoStaves + fourFour + "note 1 at 20\n");
  items.clear();
  for (int i = 1; i <= system.itemCount(); ++i) {
    items.store_item(system.item(i));
  }
  setRestDurations(items, 102, order, {{0, 0}, {50, 0}});
  EXPECT_EQ(asText(items), "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\n" + fourFour +
                               "note 1 at 20\nrest 2 at 20 kind -2 duration 4 p9 -1\n");
}

}  // namespace
}  // namespace kiv::test
