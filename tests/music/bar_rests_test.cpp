#include <string>

#include <gtest/gtest.h>

#include "tests/music/fitted_pages.h"

namespace kiv::test {
namespace {

const std::string wholeRest = " kind -2 duration ";

/// A page on which 101 and 102 play one bar, so that 102 is silent on the next page.
std::string bothPlay(const std::string& time) {
  return "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\n" + time +
         "note 2 at 20 duration 4\nbarline 2 at 60 spans 1\n"
         "staff 1 at 0 size 1 lines 5 instrument 102\nclef 1 at 2\nnote 1 at 20 duration 4\n"
         "barline 1 at 0 spans 2\nbarline 1 at 60 spans 1\n";
}

/// A page of 101 alone.
std::string onePlays(const std::string& items) {
  return "staff 1 at 0 size 1 lines 5 instrument 101\nclef 1 at 2\nbarline 1 at 0 spans 1\n" + items;
}

std::string time(int upper, int lower, int staff = 2) {
  return "timesignature " + std::to_string(staff) + " at 9 upper " + std::to_string(upper) + " lower " +
         std::to_string(lower) + "\n";
}

/// The rests of 102, the lowest staff, while 101 plays these items alone.
std::string restsBeside(const std::string& items, const std::string& inTime = time(4, 4)) {
  FittedPages pages(std::vector<std::string>{bothPlay(inTime), onePlays(items)});
  EXPECT_EQ(pages.findings(), "");
  return pages.items(2, 1, "rest");
}

const std::string end = "barline 1 at 100 spans 1\n";

TEST(BarRests, TheTimeInForceIsThatOfTheSystemsBeforeWhereASystemPrintsNone) {
  FittedPages pages(std::vector<std::string>{bothPlay(time(4, 4)),
                                             onePlays(time(3, 4, 1) + "note 1 at 20 duration 3\n" + end),
                                             onePlays("note 1 at 20 duration 3\n" + end)});
  EXPECT_EQ(pages.items(3, 1, "rest"), "60 kind -2 duration 3 p9 -1");
}

TEST(BarRests, BeforeTheFirstTimeSignatureItsTimeCounts) {
  FittedPages pages(std::vector<std::string>{onePlays("note 1 at 20 duration 1\n" + end), bothPlay(time(3, 4))});
  EXPECT_EQ(pages.items(1, 1, "rest"), "20 duration 1 p9 -1");
}

TEST(BarRests, WithoutAnyTimeSignatureBarsAreOfFourQuarters) {
  FittedPages pages(std::vector<std::string>{bothPlay(""), onePlays("note 1 at 20 duration 4\n" + end)});
  EXPECT_EQ(pages.items(2, 1, "rest"), "60 kind -2 duration 4 p9 -1");
}

TEST(BarRests, AChordCountsOnce) {
  EXPECT_EQ(restsBeside(
                "note 1 at 20 height 2 duration 2\nnote 1 at 20 height 4 duration 2\nnote 1 at 50 duration 2\n" + end),
            "60 kind -2 duration 4 p9 -1");
}

TEST(BarRests, SeveralVoicesLastAsLongAsTheLastOfThem) {
  EXPECT_EQ(
      restsBeside("note 1 at 20 height 8 duration 3\nnote 1 at 20 height 1 duration 1\nnote 1 at 40 height 1 duration "
                  "2\nnote 1 at 80 height 8 duration 1\nnote 1 at 80 height 1 duration 1\n" +
                  end),
      "60 kind -2 duration 4 p9 -1");
}

TEST(BarRests, CueMarkersAndGraceNotesDoNotCount) {
  EXPECT_EQ(
      restsBeside("note 1 at 18 height 2\nnote 1 at 20 height 2 duration 4\nrest 1 at 30 kind -2 duration 4 cue 102\n" +
                  end),
      "60 kind -2 duration 4 p9 -1");
}

TEST(BarRests, TripletsFillTheirTime) {
  EXPECT_EQ(restsBeside("note 1 at 20 duration 0.333\nnote 1 at 24 duration 0.333\nnote 1 at 28 duration 0.333\n"
                        "note 1 at 32 duration 3\n" +
                        end),
            "60 kind -2 duration 4 p9 -1");
}

TEST(BarRests, AWholeBarRestCountsFromTheBeginOfTheBarAndItsPositionIsTaken) {
  EXPECT_EQ(restsBeside("rest 1 at 57 kind -2 duration 4 p9 -1\n" + end), "57 kind -2 duration 4 p9 -1");
}

TEST(BarRests, AWholeBarRestBesideANoteOfAnotherVoiceDoesNotShortenIt) {
  const std::string voice = "note 1 at 20 duration 1\nnote 1 at 40 duration 2\n";
  const std::string after = "note 1 at 60 duration 2\nnote 1 at 80 duration 1\n";
  const std::string rest = "rest 1 at 40 kind -2 duration 4 p9 -1\n";
  EXPECT_EQ(restsBeside(voice + rest + after + end, time(3, 2)), "60 kind -2 duration 6 p9 -1");
}

TEST(BarRests, ATimeSignatureWithoutASensibleLengthCountsForNothing) {
  for (const std::string nonsense : {"6 lower 1e-20", "7 lower 0.001", "4 lower 0.4", "1e-9 lower 4", "0.4 lower 4"}) {
    const std::string signature = "timesignature 1 at 9 upper " + nonsense + "\n";
    EXPECT_EQ(restsBeside(signature + "note 1 at 20 duration 3\n" + end, time(3, 4)), "60 kind -2 duration 3 p9 -1")
        << nonsense;
  }
}

TEST(BarRests, ABarOfTheLongestUnitsIsOne) {
  EXPECT_EQ(restsBeside("note 1 at 20 duration 16\n" + end, "timesignature 2 at 9 upper 2 lower 0.5\n"),
            "60 kind -2 duration 16 p9 -1");
}

TEST(BarRests, ALongerBarGetsOneRestOfItsLength) {
  EXPECT_EQ(restsBeside("note 1 at 20 duration 4\nnote 1 at 60 duration 3\n" + end), "60 kind -2 duration 7 p9 -1");
}

TEST(BarRests, APickupIsCountedBackFromItsEnd) {
  FittedPages pages(
      {onePlays(time(4, 4, 1) + "note 1 at 20 duration 1\nnote 1 at 30 duration 2\n" + end), bothPlay("")});
  EXPECT_EQ(pages.items(1, 1, "rest"), "20 duration 1 p9 -1; 30 duration 2 p9 -1");
}

TEST(BarRests, ThePartsOfASplitBarAreCountedFromItsEnds) {
  FittedPages pages(std::vector<std::string>{bothPlay(time(4, 4)),
                                             onePlays("note 1 at 20 duration 1\nnote 1 at 30 duration 2\n" + end),
                                             onePlays("note 1 at 20 duration 1\n" + end)});
  EXPECT_EQ(pages.items(2, 1, "rest"), "20 duration 2 p9 -1; 65 duration 1 p9 -1");
  EXPECT_EQ(pages.items(3, 1, "rest"), "20 duration 1 p9 -1");
}

TEST(BarRests, InSixEighthsTheBeatHasThree) {
  EXPECT_EQ(restsBeside("note 1 at 20 duration 1.5\nnote 1 at 50 duration 0.5\n" + end, time(6, 8)),
            "20 duration 1.5 p9 -1; 50 duration 0.5 p9 -1");
}

TEST(BarRests, TwoBarlinesWithoutMusicBetweenThemGetNothing) {
  EXPECT_EQ(restsBeside("note 1 at 20 duration 4\nbarline 1 at 60 spans 1\nbarline 1 at 62 spans 1\n"
                        "note 1 at 70 duration 4\n" +
                        end),
            "40 kind -2 duration 4 p9 -1; 81 kind -2 duration 4 p9 -1");
}

TEST(BarRests, ARepeatThatBeginsAfterTheSignaturesOfASystemBoundsNoBar) {
  EXPECT_EQ(restsBeside("barline 1 at 24 spans 1 kind 2\nnote 1 at 28 duration 4\n" + end),
            "62 kind -2 duration 4 p9 -1");
}

TEST(BarRests, AnEmptyFirstBarOfASystemGetsItsRest) {
  EXPECT_EQ(restsBeside("barline 1 at 40 spans 1\nnote 1 at 50 duration 4\n" + end),
            "21 kind -2 duration 4 p9 -1; 70 kind -2 duration 4 p9 -1");
}

TEST(BarRests, ALastBarWithoutABarlineGetsItsRest) {
  EXPECT_EQ(restsBeside("note 1 at 20 duration 4\nbarline 1 at 60 spans 1\nnote 1 at 70 duration 4\n"),
            "40 kind -2 duration 4 p9 -1; 70 kind -2 duration 4 p9 -1");
}

TEST(BarRests, ALastBarIsThatOfAllItsNotesHoweverFarAwayTheyAre) {
  for (const std::string position : {"1e9", "3e38", "3.4028235e38"}) {
    const std::string rests = restsBeside(
        "note 1 at 20 duration 4\nbarline 1 at 60 spans 1\nnote 1 at 70 duration 3\n"
        "note 1 at " +
        position + " duration 1\n");
    EXPECT_EQ(rests.substr(0, rests.find(';')), "40 kind -2 duration 4 p9 -1");
    EXPECT_TRUE(rests.ends_with(" kind -2 duration 4 p9 -1")) << rests;
  }
}

TEST(BarRests, RestsStayBeforeABarlineThatIsVeryNear) {
  const std::string rests =
      restsBeside("note 1 at 20 duration 4\nbarline 1 at 60 spans 1\nnote 1 at 99.7 duration 3\n" + end);
  EXPECT_EQ(rests, "40 kind -2 duration 4 p9 -1; 99.7 duration 2 p9 -1; 99.9001 duration 1 p9 -1");
}

TEST(BarRests, RestsStayBeforeABarlineThatAQuarterOfAUnitWouldReach) {
  // The last rest is of a 256th note, while the last note has 10 units for its dotted quarter.
  const std::string notes = "note 1 at 30 duration 0.75\nnote 1 at 50 duration 0.015625\nnote 1 at 90 duration 1.5\n";
  FittedPages pages(std::vector<std::string>{bothPlay(time(12, 8)), onePlays(notes + end)});
  EXPECT_EQ(pages.findings(), "");
  EXPECT_EQ(pages.warnings({{101, 102}, {101}}), std::vector<std::string>());
}

TEST(BarRests, ALengthThatIsShorterByTheLeastDifferenceIsAnother) {
  std::string notes;
  int position = 20;
  for (const std::string duration : {"0.3333333", "0.08333333", "0.3333333", "0.6666667", "0.015625", "0.08333333"}) {
    notes += "note 1 at " + std::to_string(position) + " duration " + duration + "\n";
    position += 10;
  }
  EXPECT_EQ(restsBeside(notes + end, time(2, 2)),
            "20 duration 1 p9 -1; 53.75 duration 0.5 p9 -1; 94.5 duration 0.016 p9 -1");
}

TEST(BarRests, AnEmptyBarGetsARestOfTheTimeInForce) {
  EXPECT_EQ(restsBeside("note 1 at 20 duration 3\nbarline 1 at 60 spans 1\n" + end, time(3, 4)),
            "40 kind -2 duration 3 p9 -1; 80 kind -2 duration 3 p9 -1");
}

/// Three staves play in a bar for this long, and 104 is silent.
std::string restWhere(int first, int second, int third) {
  const auto staff = [](int number, int instrument, int duration) {
    const std::string n = std::to_string(number);
    return "staff " + n + " at 0 size 1 lines 5 instrument " + std::to_string(instrument) + "\nclef " + n +
           " at 2\nnote " + n + " at 20 duration " + std::to_string(duration) + "\nbarline " + n + " at 60 spans 1\n";
  };
  const std::string times = time(4, 4, 1);
  FittedPages pages(
      {staff(4, 101, 4) + staff(3, 102, 4) + staff(2, 103, 4) + staff(1, 104, 4) + times + "barline 1 at 0 spans 4\n",
       staff(3, 101, first) + staff(2, 102, second) + staff(1, 103, third) + "barline 1 at 0 spans 3\n"});
  EXPECT_EQ(pages.findings(), "");
  return pages.items(2, 1, "rest");
}

TEST(BarRests, OfStavesThatDisagreeTheOneWithTheTimeInForceCounts) {
  EXPECT_EQ(restWhere(3, 4, 3), "40 kind -2 duration 4 p9 -1");
}

TEST(BarRests, OfOthersMostCountAndTheLongestOfAsMany) {
  EXPECT_EQ(restWhere(6, 5, 5), "40 kind -2 duration 5 p9 -1");
  EXPECT_EQ(restWhere(6, 5, 7), "40 kind -2 duration 7 p9 -1");
}

TEST(BarRests, AGroupThatEndsThePlainConversionIsConverted) {
  const std::string emptyLastBar =
      onePlays("note 1 at 20 duration 4\nbarline 1 at 60 spans 1\nbarline 1 at 62 spans 1\n");
  EXPECT_FALSE(
      FittedPages(std::vector<std::string>{bothPlay(time(4, 4)), emptyLastBar}, RestStaves::asKnownSoFar).converted());
  EXPECT_TRUE(FittedPages(std::vector<std::string>{bothPlay(time(4, 4)), emptyLastBar}).converted());
}

}  // namespace
}  // namespace kiv::test
