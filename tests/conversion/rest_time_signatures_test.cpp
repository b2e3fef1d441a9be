#include <cmath>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "tests/conversion/set_rest_durations_fixture.h"

namespace kiv::test {
namespace {

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

TEST_F(SetRestDurations, WithoutOneTheFirstInTheOrderTableIsUsedWhicheverInstrumentHasIt) {
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

TEST_F(SetRestDurations, OneInForceIsUsedEvenIfItIsZeroAndTheOrderTableIsNot) {
  setTime(1, 3, 4);
  expectEnd(twoStaves + "timesignature 2 at 5 lower 4\nnote 1 at 20\n", {0, 50}, unhandled("0/4"));
}

TEST_F(SetRestDurations, OneOfTheOrderTableIsUsedEvenIfItsLowerNumberIsZero) {
  setTime(1, 3, 0);
  setTime(2, 3, 4);
  expectEnd(twoStaves + "note 1 at 20\n", {0, 50}, unhandled("3/0"));
}

TEST_F(SetRestDurations, OrderTableIsLookedUpOnlyToItsCount) {
  setTime(3, 3, 4);
  setInstrumentOrder({101, 102}, order);
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

TEST_F(SetRestDurations, LengthIsComputedInSinglePrecision) {
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

}  // namespace
}  // namespace kiv::test
