#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/music/fitted_pages.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Playing = std::vector<std::vector<std::int16_t>>;

const std::string both =
    "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\nkeysignature 2 at 9 key -1\ntimesignature 2 at 17 upper "
    "4 lower "
    "4\nnote 2 at 30 duration 4\nbarline 2 at 60 spans 1\n"
    "staff 1 at 0 size 1 lines 5 instrument 102\nclef 1 at 2\nkeysignature 1 at 9 key -1\ntimesignature 1 at 17 upper "
    "4 lower "
    "4\nnote 1 at 30 duration 4\nbarline 1 at 0 spans 2\nbarline 1 at 60 spans 1\n";
const std::string one = "staff 1 at 0 size 1 lines 5 instrument 101\nclef 1 at 2\nbarline 1 at 0 spans 1\n";
const Playing bothThenOne = {{101, 102}, {101}};

/// The warnings about a plain conversion, and that there are none with fitting rest staves.
std::vector<std::string> warningsOf(const std::vector<std::string>& pages, const Playing& playing = bothThenOne) {
  FittedPages plain(pages, RestStaves::asKnownSoFar);
  EXPECT_TRUE(plain.converted());
  FittedPages fitted(pages);
  EXPECT_THAT(fitted.warnings(playing), IsEmpty());
  return plain.warnings(playing);
}

const std::string sameKey = "keysignature 1 at 9 key -1\n";

TEST(MusicWarnings, RestStavesThatFitHaveNone) {
  EXPECT_THAT(warningsOf({both, one + sameKey + "note 1 at 30 duration 4\nbarline 1 at 60 spans 1\n"}), IsEmpty());
}

TEST(MusicWarnings, ARestOfAnotherLengthThanTheMusic) {
  EXPECT_THAT(
      warningsOf({both, one + sameKey +
                            "note 1 at 30 duration 4\nbarline 1 at 60 spans 1\nnote 1 at 70 duration 3\n"
                            "barline 1 at 90 spans 1\n"}),
      ElementsAre("bar-rest-length system 2 bar 2: rest staff 102: the rest lasts 4 quarters, the music of the bar 3 "
                  "quarters"));
}

TEST(MusicWarnings, TwoRestsInOneBar) {
  EXPECT_THAT(warningsOf({both, one + sameKey +
                                    "note 1 at 30 duration 4\nbarline 1 at 60 spans 1\nbarline 1 at 62 spans 1\n"
                                    "note 1 at 70 duration 4\nbarline 1 at 90 spans 1\n"}),
              ElementsAre("bar-two-rests system 2 bar 2: rest staff 102: two rests fill the same time of the bar"));
}

TEST(MusicWarnings, ABarWithoutARest) {
  EXPECT_THAT(
      warningsOf({both, one + sameKey + "note 1 at 30 duration 4\nbarline 1 at 60 spans 1\nnote 1 at 70 duration 4\n"}),
      ElementsAre("bar-without-rest system 2 bar 2: rest staff 102: the bar has no rest"));
}

TEST(MusicWarnings, AKeyThatIsNotThatOfTheSystem) {
  EXPECT_THAT(warningsOf({both, one + "keysignature 1 at 9 key 2\nnote 1 at 30 duration 4\nbarline 1 at 60 spans 1\n"}),
              ElementsAre("key-or-time-differs system 2 bar 1: rest staff 102: the key is not that of the system"));
}

TEST(MusicWarnings, ALateEntryWhoseAttributesAreNotKnown) {
  const std::string late =
      "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\nnote 2 at 30 duration 4\nbarline 2 at 60 spans 1\n"
      "staff 1 at 0 size 1 lines 1 instrument 102\nclef 1 at 2\nnote 1 at 30 duration 4\nbarline 1 at 0 spans 2\n"
      "barline 1 at 60 spans 1\n";
  const std::string before =
      one + "timesignature 1 at 17 upper 4 lower 4\nnote 1 at 30 duration 4\nbarline 1 at 60 spans 1\n";
  EXPECT_THAT(
      warningsOf({before, late}, {{101}, {101, 102}}),
      ElementsAre("late-entry-unknown system 1: rest staff 102: size, lines or clef are not those with which the "
                  "instrument enters later"));
}

TEST(MusicWarnings, AClefThatIsNotTheLastOneBefore) {
  // In a group of pages of several files, the plain conversion knows only first clefs.
  const std::string upper =
      "staff 1 at 0 size 1 lines 5 instrument 101\nclef 1 at 2\nkeysignature 1 at 9 key -1\ntimesignature 1 at 17 "
      "upper "
      "4 lower 4\nnote 1 at 30 duration 4\nbarline 1 at 0 spans 1\nbarline 1 at 60 spans 1\n";
  std::string lower = upper;
  lower.replace(lower.find("101"), 3, "102");
  const std::string change = "clef 1 at 65 height 4 kind 1\nnote 1 at 70 duration 4\nbarline 1 at 90 spans 1\n";
  const FittedPages::Files files{{{"P1A.MUS", upper + "note 1 at 70 duration 4\nbarline 1 at 90 spans 1\n"},
                                  {"P1B.MUS", lower + change},
                                  {"P2.MUS", upper}}};
  EXPECT_THAT(
      FittedPages(files, RestStaves::asKnownSoFar).warnings(bothThenOne),
      ElementsAre("clef-differs system 2: rest staff 102: the clef is not the last one that the instrument had"));
  EXPECT_THAT(FittedPages(files).warnings(bothThenOne), IsEmpty());
}

TEST(MusicWarnings, ABraceAwayFromTheLeftEdge) {
  const std::string indented =
      "staff 1 at 6 size 1 lines 5 instrument 101\nclef 1 at 8\nkeysignature 1 at 15 key -1\nbarline 1 at 6 spans "
      "1\nbarline 1 "
      "at 6 spans 1 kind 8\nnote 1 at 30 duration 4\nbarline 1 at 60 spans 1\n";
  EXPECT_THAT(warningsOf({both, indented}),
              ElementsAre("brace-displaced system 2: 1 brace stands away from the left edge of the system"));
}

TEST(MusicWarnings, TheLeftEdgeIsThatOfTheStavesThatPlay) {
  // The rest staff of the first instrument is at 0, as is the brace.
  const std::string indented =
      "staff 1 at 20 size 1 lines 5 instrument 102\nclef 1 at 22\nkeysignature 1 at 29 key -1\nbarline 1 at 20 spans "
      "1\n"
      "barline 1 at 20 spans 1 kind 8\nnote 1 at 50 duration 4\nbarline 1 at 80 spans 1\n";
  EXPECT_THAT(warningsOf({both, indented}, {{101, 102}, {102}}),
              ElementsAre("brace-displaced system 2: 1 brace stands away from the left edge of the system"));
}

TEST(MusicWarnings, AKeyThatNoStaffShowsAnyMore) {
  const std::string notes = "note 1 at 30 duration 4\nbarline 1 at 60 spans 1\n";
  const std::vector<std::string> texts{both, one + notes, one + notes, one + sameKey + notes, one + notes};
  const std::string words = "no staff shows a key, though one did before; rest staves may keep a key that has changed";
  for (const RestStaves restStaves : {RestStaves::asKnownSoFar, RestStaves::fitting}) {
    EXPECT_THAT(FittedPages(texts, restStaves).warnings({{101, 102}, {101}, {101}, {101}, {101}}),
                ElementsAre("key-not-shown system 2: " + words, "key-not-shown system 5: " + words));
  }
}

TEST(MusicWarnings, AKeyChangedBeforeTheSystemIsNotMissing) {
  const std::string change = one + sameKey +
                             "note 1 at 30 duration 4\nbarline 1 at 60 spans 1\nkeysignature 1 at 62 key 0\n"
                             "note 1 at 80 duration 4\nbarline 1 at 100 spans 1\n";
  FittedPages pages(std::vector<std::string>{both, change, one + "note 1 at 30 duration 4\nbarline 1 at 60 spans 1\n"});
  EXPECT_THAT(pages.warnings({{101, 102}, {101}, {101}}), IsEmpty());
}

TEST(MusicWarnings, AKeyIsKnownWhereOthersHaveChangedItToNone) {
  const std::string notes = "note 1 at 30 duration 4\nbarline 1 at 60 spans 1\n";
  const std::string other = "staff 1 at 0 size 1 lines 5 instrument 102\nclef 1 at 2\nbarline 1 at 0 spans 1\n";
  const std::string change = one + sameKey + notes +
                             "keysignature 1 at 62 key 0\nnote 1 at 80 duration 4\n"
                             "barline 1 at 100 spans 1\n";
  const Playing playing{{101, 102}, {101}, {102}};
  EXPECT_THAT(FittedPages(std::vector<std::string>{both, change, other + notes}).warnings(playing), IsEmpty());
  // The key of 102 is that of 101, of two flats, moved by as much.
  std::string apart = both;
  apart.replace(apart.find("key -1"), 6, "key -2");
  EXPECT_THAT(FittedPages(std::vector<std::string>{apart, one + sameKey + notes, other + notes}).warnings(playing),
              IsEmpty());
  EXPECT_THAT(FittedPages(std::vector<std::string>{both, one + sameKey + notes, other + notes}).warnings(playing),
              ElementsAre("key-not-shown system 3: no staff shows a key, though one did before; rest staves may keep a "
                          "key that has changed"));
}

TEST(MusicWarnings, AreThoseOfTheResultsBeforeOneThatCannotBeReadWhichTheFirstOneNames) {
  const std::string threeQuarters = one + sameKey + "note 1 at 30 duration 3\nbarline 1 at 60 spans 1\n";
  FittedPages pages(std::vector<std::string>{both, threeQuarters, threeQuarters}, RestStaves::asKnownSoFar);
  EXPECT_EQ(pages.warnings({{101, 102}, {101}, {101}}).size(), 2U);
  pages.damageResult(3);
  const auto warnings = pages.warnings({{101, 102}, {101}, {101}});
  ASSERT_EQ(warnings.size(), 2U);
  EXPECT_EQ(warnings[0],
            "results-not-checked system 3: the result cannot be read; the rest staves in it and in those after it are "
            "not checked");
}

/// The result after `both` in which 101 plays that.
FittedPages fittedAfterBoth(const std::string& music) {
  return FittedPages(std::vector<std::string>{both, one + sameKey + music});
}

TEST(MusicWarnings, TheRestOfAVeryLongBarIsNone) {
  std::string notes;
  for (int note = 0; note < 12; ++note) {
    notes += "note 1 at " + std::to_string(30 + 5 * note) + " duration 100\n";
  }
  FittedPages pages = fittedAfterBoth(notes + "barline 1 at 100 spans 1\n");
  EXPECT_EQ(pages.items(2, 1, "rest"), "65 kind -2 duration 1200 p9 -1");
  EXPECT_THAT(pages.warnings(bothThenOne), IsEmpty());
}

TEST(MusicWarnings, ANoteThatIsTooLongToBeCounted) {
  const std::string words = ": a note or rest lasts more than 1024 quarters, so it is not counted";
  EXPECT_THAT(fittedAfterBoth("note 1 at 30 duration 4\nnote 1 at 50 duration 1030\nbarline 1 at 100 spans 1\n")
                  .warnings(bothThenOne),
              ElementsAre("duration-too-long system 2 bar 1" + words));
  EXPECT_THAT(fittedAfterBoth("note 1 at 30 duration 4\nbarline 1 at 60 spans 1\nnote 1 at 80 duration 1E30\n")
                  .warnings(bothThenOne),
              ElementsAre("duration-too-long system 2" + words))
      << "the last bar is none without it";
}

TEST(MusicWarnings, StavesThatDisagreeInBothConversions) {
  const std::string three =
      "staff 3 at 0 size 1 lines 5 instrument 101\nclef 3 at 2\nnote 3 at 30 duration 4\nbarline 3 at 60 spans 1\n"
      "staff 2 at 0 size 1 lines 5 instrument 102\nclef 2 at 2\nnote 2 at 30 duration 4\nbarline 2 at 60 spans 1\n"
      "staff 1 at 0 size 1 lines 5 instrument 103\nclef 1 at 2\ntimesignature 1 at 17 upper 4 lower 4\nnote 1 at 30 "
      "duration "
      "4\nbarline 1 at 60 spans 1\nbarline 1 at 0 spans 3\n";
  const std::string two =
      "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\nnote 2 at 30 duration 4\nbarline 2 at 60 spans 1\n"
      "staff 1 at 0 size 1 lines 5 instrument 102\nclef 1 at 2\nnote 1 at 30 duration 3\nbarline 1 at 60 spans 1\n"
      "barline 1 at 0 spans 2\n";
  for (const RestStaves restStaves : {RestStaves::asKnownSoFar, RestStaves::fitting}) {
    EXPECT_THAT(
        FittedPages(std::vector<std::string>{three, two}, restStaves).warnings({{101, 102, 103}, {101, 102}}),
        ElementsAre("staves-disagree system 2 bar 1: the staves that play last unequally long; rest staves should last "
                    "4 quarters"));
  }
}

}  // namespace
}  // namespace kiv::test
