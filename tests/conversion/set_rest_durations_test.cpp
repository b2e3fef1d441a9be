#include "conversion/set_rest_durations.h"

#include <cmath>
#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/number.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

const std::string twoStaves = "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102 p20 1\n";
const std::string fourFour = "timesignature 2 at 5 upper 4 lower 4\n";

std::string unhandled(const std::string& signature) {
  return "Time signature with up/dn=" + signature + " cannot be handled by this program. Contact development.";
}

Item itemOf(const ItemTable& table, int i) {
  Item item{{}, table.itemText(i)};
  for (int p = 1; p <= parameterCount; ++p) {
    item.par[static_cast<std::size_t>(p)] = table.itemPar(i, p);
  }
  return item;
}

/// Systems whose instrument 102 has a rest staff to be filled.
class SetRestDurations : public ::testing::Test {
 protected:
  SetRestDurations() { setInstrumentOrder(host, {101, 102, 103}, order); }

  void setTime(int place, float upper, float lower) {
    order.entry(place).timeUp = upper;
    order.entry(place).timeDn = lower;
  }
  void fill(const std::string& system, const std::vector<float>& barlinesAt, std::int16_t instrument = 102) {
    BarlineList barlines;
    for (const float position : barlinesAt) {
      barlines.push_back({position, 0});
    }
    items = tableOf(host, system);
    before = items.itemCount();
    end = endOf([&] { setRestDurations(page, instrument, order, barlines); });
  }
  /// The items that were added.
  std::string added(const std::string& system, const std::vector<float>& barlinesAt, std::int16_t instrument = 102) {
    fill(system, barlinesAt, instrument);
    EXPECT_EQ(end, std::nullopt) << system;
    ItemTable table;
    for (int i = before + 1; i <= items.itemCount(); ++i) {
      table.store_item(host, itemOf(items, i));
    }
    return asText(table);
  }
  /// How long the rest is of a bar under a time signature.
  float lengthOf(const std::string& upperAndLower) {
    fill(twoStaves + "timesignature 2 at 5 " + upperAndLower + "\nnote 1 at 20\n", {0, 100});
    EXPECT_EQ(end, std::nullopt) << upperAndLower;
    return items.itemPar(items.itemCount(), par::duration);
  }
  void expectEnd(const std::string& system, const std::vector<float>& barlinesAt, const std::string& text) {
    host.messages.clear();
    fill(system, barlinesAt);
    EXPECT_EQ(end, 1) << system;
    EXPECT_EQ(host.messages, std::vector{critical(text)}) << system;
  }

  FakeHost host;
  const std::string file = "C:\\M\\X1.MUS";
  ItemTable items;
  const SystemPage page{host, file, items};
  OrderTable order;
  int before = 0;
  std::optional<int> end;
};

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

TEST_F(SetRestDurations, WithoutABarOnlyTheMarkIsTakenOff) {
  const std::string unfilled = twoStaves + "note 2 at 10 p20 3\nstaff 3 at 0 instrument 102 p20 1\n";
  for (const auto& barlines : {std::vector<float>{}, std::vector<float>{50}}) {
    fill(unfilled, barlines);
    EXPECT_EQ(end, std::nullopt) << "nobody asks for beats or time signatures";
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

TEST_F(SetRestDurations, BeatLiesBehindTheBarlineNotAtIt) {
  EXPECT_EQ(added(twoStaves + fourFour + "note 1 at 10\nnote 1 at 10.000001\nnote 1 at 9\n", {10, 50}),
            "rest 2 at 10.000001 kind -2 duration 4 p9 -1\n");
}

TEST_F(SetRestDurations, BarWithoutABeatTakesThatOfABarToCome) {
  EXPECT_EQ(added(twoStaves + fourFour + "note 1 at 70\n", {0, 50, 100}),
            "rest 2 at 70 kind -2 duration 4 p9 -1\nrest 2 at 70 kind -2 duration 4 p9 -1\n");
}

TEST_F(SetRestDurations, BeatMustLieLessThan999BehindTheBarline) {
  const std::string system = twoStaves + "timesignature 2 at 999 upper 4 lower 4\n";
  EXPECT_EQ(added(system + "note 1 at 1000.99994\n", {2, 50}), "rest 2 at 1000.99994 kind -2 duration 4 p9 -1\n");
  expectEnd(system + "note 1 at 1001\n", {2, 50}, "Logical error 3 in setRestDurations");
  expectEnd(system + "note 1 at 5000\n", {2, 50}, "Logical error 3 in setRestDurations");
}

TEST_F(SetRestDurations, FirstOfTwoEquallyNearBeatsGivesThePlace) {
  // Both lie 500 behind the barline as singles.
  EXPECT_EQ(added(twoStaves + fourFour + "note 1 at 10.000001\nnote 1 at 10\n", {-490, 50}),
            "rest 2 at 10.000001 kind -2 duration 4 p9 -1\n");
  EXPECT_EQ(added(twoStaves + fourFour + "note 1 at 10\nnote 1 at 10.000001\n", {-490, 50}),
            "rest 2 at 10 kind -2 duration 4 p9 -1\n");
}

TEST_F(SetRestDurations, BarlineWithoutANumberForItsPositionHasNoBeat) {
  fill(twoStaves + fourFour + "note 1 at 10\n", {std::numeric_limits<float>::quiet_NaN(), 50});
  EXPECT_EQ(host.messages, std::vector{critical("Logical error 3 in setRestDurations")});
}

// --- the time signature in force ---

TEST_F(SetRestDurations, NearestTimeSignatureBeforeTheBeatIsInForce) {
  EXPECT_EQ(added(twoStaves + "timesignature 2 at 70 upper 2 lower 4\ntimesignature 2 at 12 upper 3 lower 4\n"
                              "timesignature 2 at 5 upper 9 lower 8\nnote 1 at 20\nnote 1 at 60\nnote 1 at 110\n",
                  {0, 50, 100, 150}),
            "rest 2 at 20 kind -2 duration 3 p9 -1\nrest 2 at 60 kind -2 duration 3 p9 -1\n"
            "rest 2 at 110 kind -2 duration 2 p9 -1\n");
}

TEST_F(SetRestDurations, TimeSignatureBetweenBarlineAndBeatIsInForceAlready) {
  EXPECT_EQ(
      added(twoStaves + fourFour + "timesignature 2 at 55 upper 3 lower 4\nnote 1 at 20\nnote 1 at 60\n", {0, 50, 100}),
      "rest 2 at 20 kind -2 duration 4 p9 -1\nrest 2 at 60 kind -2 duration 3 p9 -1\n");
}

TEST_F(SetRestDurations, TimeSignatureAtTheBeatIsNotInForce) {
  EXPECT_EQ(added(twoStaves + fourFour + "timesignature 2 at 20 upper 3 lower 4\nnote 1 at 20\n", {0, 50}),
            "rest 2 at 20 kind -2 duration 4 p9 -1\n");
}

TEST_F(SetRestDurations, FirstOfTwoEquallyNearTimeSignaturesIsInForce) {
  EXPECT_EQ(added(twoStaves + "timesignature 2 at 5 upper 3 lower 4\n" + fourFour + "note 1 at 20\n", {0, 50}),
            "rest 2 at 20 kind -2 duration 3 p9 -1\n");
}

TEST_F(SetRestDurations, TimeSignaturesOfOtherStavesAreNotInForce) {
  setTime(2, 3, 8);
  EXPECT_EQ(added(twoStaves + "timesignature 1 at 5 upper 4 lower 4\ntimesignature 2.0000002 at 5 upper 4 lower 4\n"
                              "keysignature 2 at 5 key 4 type 4\nitem 17.5 2 5 0 4 4\nnote 1 at 20\n",
                  {0, 50}),
            "rest 2 at 20 kind -2 duration 1.5 p9 -1\n");
}

TEST_F(SetRestDurations, TimeSignature999OrMoreBeforeTheBeatIsNotInForce) {
  setTime(1, 3, 4);
  EXPECT_EQ(added(twoStaves + fourFour + "note 1 at 1004\n", {500, 1100}), "rest 2 at 1004 kind -2 duration 3 p9 -1\n");
  EXPECT_EQ(added(twoStaves + fourFour + "note 1 at 1003.99994\n", {500, 1100}),
            "rest 2 at 1003.99994 kind -2 duration 4 p9 -1\n");
}

TEST_F(SetRestDurations, WithoutOneTheFirstInTheOrderTableIsTakenWhicheverInstrumentHasIt) {
  const std::string system = twoStaves + "note 1 at 20\n";
  setTime(3, 3, 4);
  EXPECT_EQ(added(system, {0, 50}), "rest 2 at 20 kind -2 duration 3 p9 -1\n") << "a later instrument's";
  setTime(1, 6, 4);
  setTime(2, 5, 4);
  EXPECT_EQ(added(system, {0, 50}), "rest 2 at 20 kind -2 duration 6 p9 -1\n") << "not the rest staff's own";
  setTime(1, 0, 4);
  EXPECT_EQ(added(system, {0, 50}), "rest 2 at 20 kind -2 duration 5 p9 -1\n") << "the lower number does not count";
}

TEST_F(SetRestDurations, AnyUpperNumberOfTheOrderTableOtherThanZeroIsOne) {
  setTime(2, 5, 4);
  setTime(1, -3, 4);
  EXPECT_EQ(added(twoStaves + "note 1 at 20\n", {0, 50}), "rest 2 at 20 kind -2 duration -3 p9 -1\n");
  setTime(1, std::numeric_limits<float>::quiet_NaN(), 4);
  fill(twoStaves + "note 1 at 20\n", {0, 50});
  EXPECT_TRUE(std::isnan(items.itemPar(items.itemCount(), par::duration)));
}

TEST_F(SetRestDurations, OneInForceIsTakenEvenIfItIsZeroAndTheOrderTableIsNot) {
  setTime(1, 3, 4);
  expectEnd(twoStaves + "timesignature 2 at 5 lower 4\nnote 1 at 20\n", {0, 50}, unhandled("0/4"));
}

TEST_F(SetRestDurations, OneOfTheOrderTableIsTakenEvenIfItsLowerNumberIsZero) {
  setTime(1, 3, 0);
  setTime(2, 3, 4);
  expectEnd(twoStaves + "note 1 at 20\n", {0, 50}, unhandled("3/0"));
}

TEST_F(SetRestDurations, OrderTableIsLookedUpOnlyToItsCount) {
  setTime(3, 3, 4);
  setInstrumentOrder(host, {101, 102}, order);
  expectEnd(twoStaves + "note 1 at 20\n", {0, 50}, "Logical error 4 in setRestDurations");
}

// --- the length of the bar ---

TEST_F(SetRestDurations, LengthOfABarIsInQuarterNotes) {
  EXPECT_EQ(lengthOf("upper 4 lower 4"), 4);
  EXPECT_EQ(lengthOf("upper 3 lower 4"), 3);
  EXPECT_EQ(lengthOf("upper 6 lower 8"), 3);
  EXPECT_EQ(lengthOf("upper 2 lower 2"), 4);
  EXPECT_EQ(lengthOf("upper 3 lower 8"), 1.5F);
  EXPECT_EQ(lengthOf("upper 4 lower 8"), 2) << "4 is no code here";
  EXPECT_EQ(lengthOf("upper 5 lower 16"), 1.25F);
}

TEST_F(SetRestDurations, CommonTimeAndAllaBreveAreFourQuartersWhateverTheirLowerNumber) {
  for (const char* lower : {"", " lower 4", " lower 99", " lower -1", " lower 0x7FC00000"}) {
    EXPECT_EQ(lengthOf(std::string("upper 99") + lower), 4) << lower;
    EXPECT_EQ(lengthOf(std::string("upper 98") + lower), 4) << lower;
  }
  EXPECT_EQ(lengthOf("upper 97 lower 4"), 97);
  EXPECT_EQ(lengthOf("upper 98.5 lower 4"), 98.5F);
  EXPECT_EQ(lengthOf("upper 4 lower 99"), 4.0F / 99 * 4) << "the lower number is no code";
}

TEST_F(SetRestDurations, CodesOfTheOrderTableMeanTheSame) {
  for (const float code : {99.0F, 98.0F}) {
    setTime(1, code, 0);
    EXPECT_EQ(added(twoStaves + "note 1 at 20\n", {0, 50}), "rest 2 at 20 kind -2 duration 4 p9 -1\n");
  }
}

TEST_F(SetRestDurations, LengthIsReckonedInSingles) {
  EXPECT_EQ(lengthOf("upper 1 lower 3"), 1.0F / 3.0F * 4.0F);
  EXPECT_EQ(lengthOf("upper 7 lower 0.3"), 7.0F / 0.3F * 4.0F);
  EXPECT_EQ(lengthOf("upper 3e38 lower 8"), 3e38F / 8.0F * 4.0F);
  EXPECT_EQ(lengthOf("upper 1e-45 lower 4"), 0) << "the quotient is too small for a single";
}

TEST_F(SetRestDurations, OddNumbersArePassedOn) {
  EXPECT_EQ(lengthOf("upper -3 lower 4"), -3);
  EXPECT_EQ(lengthOf("upper 3 lower -4"), -3);
  EXPECT_EQ(lengthOf("upper 0.5 lower 4"), 0.5F);
  EXPECT_TRUE(std::isnan(lengthOf("upper 0x7FC00000 lower 4")));
  EXPECT_TRUE(std::isinf(lengthOf("upper 0x7F800000 lower 4")));
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
    items.store_item(host, {{0, type::clef, 1}, ""});
  }
  end = endOf([&] { setRestDurations(page, 102, order, {{0, 0}, {10, 0}, {15, 0}}); });
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("MUS file too big for operation. Hit OK to terminate.")});
  EXPECT_EQ(items.itemCount(), itemLimit);
}

TEST_F(SetRestDurations, RowsLeftBehindTheTableNeitherCountNorShowThrough) {
  items = tableOf(host,
                  "clef 1 at 1\nclef 1 at 1\nclef 1 at 1\nclef 1 at 1\ncountedtext 2 at 1 p4 5 p6 6 p8 8 \"old\"\n"
                  "note 1 at 11\ntimesignature 2 at 10 upper 9 lower 4\nstaff 2 at 0 instrument 103\n");
  const ItemTable system = tableOf(host, twoStaves + fourFour + "note 1 at 20\n");
  items.restart();
  for (int i = 1; i <= system.itemCount(); ++i) {
    items.store_item(host, itemOf(system, i));
  }
  setRestDurations(page, 102, order, {{0, 0}, {50, 0}});
  EXPECT_EQ(asText(items), "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\n" + fourFour +
                               "note 1 at 20\nrest 2 at 20 kind -2 duration 4 p9 -1\n");
}

// --- against the rules as they are put: scans with a running best ---

constexpr float tooFar = 999;

int plainBeat(const ItemTable& items, float staff, float x) {
  float best = tooFar;
  int found = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    const bool beat = items.itemPar(i, 1) == 1 || items.itemPar(i, 1) == 2;
    if (beat && items.itemPar(i, 2) == staff && items.itemPar(i, 3) > x && items.itemPar(i, 3) - x < best) {
      best = items.itemPar(i, 3) - x;
      found = i;
    }
  }
  return found;
}

int plainTime(const ItemTable& items, float staff, float x) {
  float best = tooFar;
  int found = 0;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.itemPar(i, 1) == 18 && items.itemPar(i, 2) == staff && items.itemPar(i, 3) < x &&
        x - items.itemPar(i, 3) < best) {
      best = x - items.itemPar(i, 3);
      found = i;
    }
  }
  return found;
}

int plainStaff(const ItemTable& items, int p, float value) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.itemPar(i, 1) == 8 && items.itemPar(i, p) == value) {
      return i;
    }
  }
  return 0;
}

/// Upper and lower number in force before the beat, with the codes resolved.
std::pair<float, float> plainSignature(Host& host, const ItemTable& items, float staff, float x,
                                       const OrderTable& order) {
  float upper = 0;
  float lower = 0;
  if (const int time = plainTime(items, staff, x); time != 0) {
    upper = items.itemPar(time, 5);
    lower = items.itemPar(time, 6);
  } else {
    int k = 1;
    while (k <= order.count() && order.entry(k).timeUp == 0) {
      ++k;
    }
    if (k > order.count()) {
      host.fatal("Logical error 4 in setRestDurations");
    }
    upper = order.entry(k).timeUp;
    lower = order.entry(k).timeDn;
  }
  if (upper == 99) {
    return {4.0F, 4.0F};
  }
  return upper == 98 ? std::pair{2.0F, 2.0F} : std::pair{upper, lower};
}

void plainSetRestDurations(Host& host, ItemTable& items, const OrderTable& order, const BarlineList& barlines) {
  const int rest = plainStaff(items, 9, 102);
  if (rest == 0) {
    host.fatal("Logical error 1 in setRestDurations");
  }
  const int reference = plainStaff(items, 20, 0);
  if (reference == 0) {
    host.fatal("Logical error 2 in setRestDurations");
  }
  const float staff = items.itemPar(rest, 2);
  for (std::size_t b = 1; b < barlines.size(); ++b) {
    const int beat = plainBeat(items, items.itemPar(reference, 2), barlines[b - 1].position);
    if (beat == 0) {
      host.fatal("Logical error 3 in setRestDurations");
    }
    const float x = items.itemPar(beat, 3);
    const auto [upper, lower] = plainSignature(host, items, staff, x, order);
    if (upper == 0 || lower == 0) {
      host.fatal(unhandled(generalNumber(upper) + "/" + generalNumber(lower)));
    }
    items.store_item(host, {{0, 2, staff, x, 0, -2, 0, upper / lower * 4, 0, -1}, ""});
  }
  items.itemPar(rest, 20) = 0;
}

using Choice = std::vector<float>;

/// Staves and up to 16 other items of two numbers, in any order. Many systems lack what is sought.
std::vector<Item> randomSystem(Dice& dice) {
  const Choice types = {1, 1, 1, 2, 18, 18, 3};
  const Choice positions = {-995, -490, 0, 5, 5, 10, 10.000001F, 20, 60, 60.000004F, 110, 1004};
  const Choice uppers = {4, 3, 6, 99, 98, 2, 7};
  const auto any = [&](const Choice& choice) { return choice[dice.below(choice.size())]; };
  const auto anyStaff = [&] { return static_cast<float>(1 + dice.below(2)); };
  std::vector<Item> items;
  for (const float instrument : {101.0F, 102.0F, 102.0F, 103.0F}) {
    if (!dice.oneIn(4)) {
      items.push_back({{0, 8, anyStaff(), 0, 0, 0, 0, 0, 0, instrument}, ""});
      items.back().par[20] = instrument == 102 || dice.oneIn(2) ? 1.0F : 0.0F;
    }
  }
  for (std::uint32_t count = dice.below(17); count > 0; --count) {
    const float upper = dice.oneIn(20) ? 0.0F : any(uppers);
    const float lower = dice.oneIn(20) ? 0.0F : 4.0F;
    items.push_back({{0, any(types), anyStaff(), any(positions), 0, upper, lower}, ""});
  }
  for (std::size_t n = items.size(); n > 1; --n) {
    std::swap(items[n - 1], items[dice.below(n)]);
  }
  return items;
}

TEST_F(SetRestDurations, AnySystemsGiveWhatTheRulesSay) {
  const Choice places = {-994, -490, 0, 5, 10, 50, 60, 100};
  Dice dice(54);
  ItemTable plain;
  int filled = 0;
  for (int round = 0; round < 600; ++round) {
    setTime(1, 0, 4);
    setTime(2, dice.oneIn(3) ? 0.0F : 5.0F, 8);
    BarlineList barlines;
    for (std::uint32_t count = dice.below(5); count > 0; --count) {
      barlines.push_back({places[dice.below(places.size())], 0});
    }
    items.restart();
    plain.restart();
    for (const Item& item : randomSystem(dice)) {
      items.store_item(host, item);
      plain.store_item(host, item);
    }
    const std::string system = asText(items);
    FakeHost plainHost;
    host.messages.clear();
    end = endOf([&] { setRestDurations(page, 102, order, barlines); });
    ASSERT_EQ(end, endOf([&] { plainSetRestDurations(plainHost, plain, order, barlines); })) << system;
    ASSERT_EQ(host.messages, plainHost.messages) << system;
    ASSERT_EQ(asText(items), asText(plain)) << "of\n" << system;
    filled += !end && barlines.size() > 1 ? 1 : 0;
  }
  EXPECT_GT(filled, 50);
}

}  // namespace
}  // namespace kiv::test
