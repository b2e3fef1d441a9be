#include "diagnostics/rest_staff.h"

#include <gtest/gtest.h>

#include "tests/drawing/items.h"

namespace kiv::test {
namespace {

const std::string generatedItems =
    "item 10 1 -4 0 105 0.7\n"
    "clef 1 at 2 kind 1\n"
    "keysignature 1 at 9 key -1 type 1\n"
    "timesignature 1 at 17 upper 3 lower 4\n"
    "barline 1 at 0 spans 2 kind 8\n"
    "rest 1 at 28 kind -2 duration 3 p9 -1\n"
    "barline 1 at 80 spans 1\n";

bool isGenerated(const std::string& text) {
  return isGeneratedRestStaff(0, itemsOf(text));
}

TEST(RestStaff, HoldsWhatAConversionPutsThere) {
  EXPECT_TRUE(isGenerated(generatedItems));
  EXPECT_FALSE(isGeneratedRestStaff(5, itemsOf(generatedItems))) << "the clef is not 2 to the right of the staff's end";
}

TEST(RestStaff, HasNoNotesAndNoTexts) {
  EXPECT_FALSE(isGenerated(generatedItems + "note 1 at 40 height 2 duration 1\n"));
  EXPECT_FALSE(isGenerated(generatedItems + "shorttext 1 at 40 \"ff\"\n"));
  EXPECT_FALSE(isGenerated(generatedItems + "item 7 1 40\n"));
}

TEST(RestStaff, ANotationProgramsRestHasAForm) {
  EXPECT_FALSE(isGenerated(generatedItems + "rest 1 at 100 kind -2 form -1 duration 3 p9 -1\n"));
  EXPECT_FALSE(isGenerated(generatedItems + "rest 1 at 100 kind -2 duration 3\n"));
  EXPECT_FALSE(isGenerated(generatedItems + "rest 1 at 100 kind -2 height 4 duration 3 p9 -1\n"));
  EXPECT_FALSE(isGenerated(generatedItems + "rest 1 at 100 kind -2 duration 3 p9 -1 cue 101\n"));
}

TEST(RestStaff, ThatFitsTheMusicMayHaveShortRestsAndAName) {
  EXPECT_TRUE(isGenerated(generatedItems + "rest 1 at 90 duration 1 p9 -1\ntext 1 at -9 \"Flute\"\n"));
  EXPECT_FALSE(isGenerated(generatedItems + "rest 1 at 90 kind -1 duration 1 p9 -1\n"));
}

TEST(RestStaff, HasAtMostOneClef) {
  EXPECT_FALSE(isGenerated(generatedItems + "clef 1 at 2\n"));
  EXPECT_TRUE(isGenerated("rest 1 at 28 kind -2 duration 3 p9 -1\n"));
}

TEST(RestStaff, WithoutARestIsKnownByTheNumberThatAConversionShows) {
  EXPECT_TRUE(isGenerated("item 10 1 -4 0 105 0.7\nclef 1 at 2\nbarline 1 at 0 spans 1\n"));
  EXPECT_TRUE(isGenerated("item 10 1 -4 0 105 0.7\nbarline 1 at 0 spans 1\n"));
  EXPECT_FALSE(isGenerated("item 10 1 -5 0 105 0.7\nclef 1 at 2\nbarline 1 at 0 spans 1\n"));
  EXPECT_FALSE(isGenerated("clef 1 at 2\nbarline 1 at 0 spans 1\n"));
}

TEST(RestStaff, WithoutRestAndNumberIsBare) {
  const auto isBare = [](const std::string& text) { return isBareStaff(0, itemsOf(text)); };
  EXPECT_TRUE(isBare("clef 1 at 2 kind 1\nkeysignature 1 at 9 key -1\nbarline 1 at 0 spans 1\n"));
  EXPECT_FALSE(isBare("barline 1 at 0 spans 1\n")) << "a staff of which nothing is known";
  EXPECT_FALSE(isBare("clef 1 at 3 kind 1\nbarline 1 at 0 spans 1\n"));
  EXPECT_FALSE(isBare("clef 1 at 2 kind 1 p7 0.7\nbarline 1 at 0 spans 1\n"));
  EXPECT_FALSE(isBare("clef 1 at 2\nclef 1 at 40\n"));
  EXPECT_FALSE(isBare("clef 1 at 2\nnote 1 at 40 duration 1\n"));
}

}  // namespace
}  // namespace kiv::test
