#include "verify/music_time.h"

#include <limits>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using proof::BarClock;
using proof::MusicNote;
using proof::quarterNote;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

MusicNote note(float position, float duration) {
  return {ItemType::note, position, 0, duration, 0};
}

MusicNote rest(float position, float duration, float kind = 0) {
  return {ItemType::rest, position, kind, duration, 0};
}

MusicNote cue(float position, float duration) {
  return {ItemType::rest, position, 0, duration, 3};
}

/// The length of a bar in quarter notes.
double quarters(const std::vector<MusicNote>& notes) {
  return proof::inQuarters(BarClock().timeOf(notes).length);
}

/// Its moments, in quarter notes, and their positions: "0 at 10".
std::vector<std::string> moments(const std::vector<MusicNote>& notes) {
  std::vector<std::string> all;
  for (const proof::Moment& moment : BarClock().momentsOf(notes)) {
    all.push_back(std::to_string(moment.time / quarterNote) + " at " +
                  std::to_string(static_cast<int>(moment.position)));
  }
  return all;
}

TEST(BarClock, NotesFollowEachOther) {
  EXPECT_EQ(quarters({note(10, 1), note(20, 2), rest(30, 1)}), 4);
  EXPECT_THAT(moments({note(10, 1), note(20, 2), rest(30, 1)}), ElementsAre("0 at 10", "1 at 20", "3 at 30"));
}

TEST(BarClock, WhatStandsTogetherBeginsTogether) {
  EXPECT_EQ(quarters({note(10, 1), note(10, 3), note(20, 1)}), 3);
  EXPECT_THAT(moments({note(10, 1), note(10, 3), note(20, 1)}), ElementsAre("0 at 10", "1 at 20"));
}

TEST(BarClock, AWholeBarRestIsNoMoment) {
  const proof::StaffTime time = BarClock().timeOf(std::vector{rest(30, 4, -2), rest(40, 3, -12)});
  EXPECT_TRUE(time.plays);
  EXPECT_FALSE(time.hasMoments);
  EXPECT_EQ(time.length, 4 * quarterNote);
  EXPECT_EQ(time.wholeBarRest, 30);
  EXPECT_THAT(moments({rest(30, 4, -2)}), IsEmpty());
}

TEST(BarClock, CuesGraceNotesAndWhatIsTooLongTakeNoTime) {
  EXPECT_FALSE(BarClock().timeOf(std::vector{cue(10, 4), note(20, 0), note(30, 1025)}).plays);
  EXPECT_EQ(quarters({cue(10, 4), note(20, 1), note(30, 0), note(40, 1)}), 2);
}

TEST(BarClock, HasALongestNote) {
  const std::vector longBar = {note(10, 1025)};
  EXPECT_EQ(BarClock(proof::longestRest).timeOf(longBar).length, 1025 * quarterNote);
}

TEST(BarClock, ForgetsTheBarBefore) {
  BarClock clock;
  clock.timeOf(std::vector{note(10, 0.5)});
  EXPECT_EQ(clock.timeOf(std::vector{note(10, 1), note(20, 1)}).length, 2 * quarterNote);
  EXPECT_EQ(clock.timeOf(std::vector<MusicNote>()).length, 0);
}

TEST(MusicNote, IsTooLongAbove1024QuartersUnlessItIsACue) {
  EXPECT_FALSE(proof::isTooLong(note(10, 1024)));
  EXPECT_TRUE(proof::isTooLong(note(10, 1025)));
  EXPECT_FALSE(proof::isTooLong(cue(10, 1025)));
}

TEST(MusicNote, WithoutADurationTakesNoTime) {
  const float none = std::numeric_limits<float>::quiet_NaN();
  EXPECT_FALSE(proof::takesTime(note(10, none)));
  EXPECT_FALSE(proof::isTooLong(note(10, none)));
}

}  // namespace
}  // namespace kiv::test
