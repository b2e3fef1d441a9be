#include "drawing/note_value.h"

#include <limits>
#include <ostream>

#include <gtest/gtest.h>

namespace kiv {

void PrintTo(const NoteValue& value, std::ostream* out) {
  *out << value.quarters << " quarters, " << value.dots << " dots";
}

}  // namespace kiv

namespace kiv::test {
namespace {

TEST(NoteValueTest, IsAPowerOfTwoWithDots) {
  EXPECT_EQ(noteValue(4), (NoteValue{4, 0}));
  EXPECT_EQ(noteValue(6), (NoteValue{4, 1}));
  EXPECT_EQ(noteValue(3), (NoteValue{2, 1}));
  EXPECT_EQ(noteValue(1), (NoteValue{1, 0}));
  EXPECT_EQ(noteValue(1.75), (NoteValue{1, 2}));
  EXPECT_EQ(noteValue(0.75), (NoteValue{0.5, 1}));
  EXPECT_EQ(noteValue(0.25), (NoteValue{0.25, 0}));
}

TEST(NoteValueTest, ATripletIsWrittenAsTheLongerValue) {
  EXPECT_EQ(noteValue(1.0F / 3), (NoteValue{0.5, 0}));
  EXPECT_EQ(noteValue(2.0F / 3), (NoteValue{1, 0}));
}

TEST(NoteValueTest, OtherDurationsAreTheNextLowerValue) {
  EXPECT_EQ(noteValue(2.5), (NoteValue{2, 0}));
  EXPECT_EQ(noteValue(1000), (NoteValue{4, 0}));
  EXPECT_EQ(noteValue(1e-30F), (NoteValue{0.015625, 0}));
  EXPECT_EQ(noteValue(std::numeric_limits<float>::infinity()), (NoteValue{4, 0}));
}

TEST(NoteValueTest, WhatIsNoDurationIsAQuarter) {
  EXPECT_EQ(noteValue(0), NoteValue());
  EXPECT_EQ(noteValue(-1), NoteValue());
  EXPECT_EQ(noteValue(std::numeric_limits<float>::quiet_NaN()), NoteValue());
}

TEST(NoteValueTest, FlagsHalveTheQuarter) {
  EXPECT_EQ(noteValue(2).flags(), 0);
  EXPECT_EQ(noteValue(1).flags(), 0);
  EXPECT_EQ(noteValue(0.75).flags(), 1);
  EXPECT_EQ(noteValue(0.25).flags(), 2);
  EXPECT_EQ(noteValue(0.0625).flags(), 4);
  EXPECT_EQ(noteValue(0.015625).flags(), 6);
  EXPECT_EQ(noteValue(1e-30F).flags(), 6);
}

}  // namespace
}  // namespace kiv::test
