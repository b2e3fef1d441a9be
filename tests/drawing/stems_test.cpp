#include <cmath>
#include <sstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/drawing/page_elements.h"

namespace kiv::test {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A beam: where its outer edge begins and ends.
struct Beam {
  double x1 = 0;
  double y1 = 0;
  double x2 = 0;
  double y2 = 0;

  double at(double x) const { return y1 + (y2 - y1) * (x - x1) / (x2 - x1); }
};

std::vector<Beam> beams(const Elements& page) {
  std::vector<Beam> found;
  for (const XmlElement& path : withClass(page, "beam")) {
    std::istringstream data(path["d"]);
    Beam beam;
    char letter = 0;
    data >> letter >> beam.x1 >> beam.y1 >> letter >> beam.x2 >> beam.y2;
    found.push_back(beam);
  }
  return found;
}

std::vector<std::string> flags(const Elements& page) {
  std::vector<std::string> names;
  for (const XmlElement& flag : withClass(page, "flag")) {
    names.push_back(flag["href"].substr(1));
  }
  return names;
}

/// A staff in 4/4 with a barline at 100, and these items.
Elements inFourFour(const std::string& items) {
  return onAStaff("timesignature 1 at 9 upper 4 lower 4\nbarline 1 at 100 spans 1\n" + items);
}

TEST(Stems, TheNumberOfFlagsIsThatOfTheDuration) {
  EXPECT_THAT(flags(onAStaff("note 1 at 30 height 0 duration 1\n")), IsEmpty());
  EXPECT_THAT(flags(onAStaff("note 1 at 30 height 0 duration 0.5\n")), ElementsAre("flag-up"));
  EXPECT_THAT(flags(onAStaff("note 1 at 30 height 0 duration 0.75\n")), ElementsAre("flag-up"));
  EXPECT_THAT(flags(onAStaff("note 1 at 30 height 0 duration 0.25\n")), ElementsAre("short-flag-up", "short-flag-up"));
  EXPECT_EQ(flags(onAStaff("note 1 at 30 height 0 duration 0.03125\n")).size(), 5U);
}

TEST(Stems, FlagsOfAStemDownAreMirrored) {
  const Elements up = onAStaff("note 1 at 30 height 0 duration 0.25\n");
  const Elements down = onAStaff("note 1 at 30 height 8 duration 0.25\n");
  EXPECT_THAT(flags(down), ElementsAre("short-flag-down", "short-flag-down"));
  const auto place = [](const Elements& page, std::size_t flag) {
    const XmlElement stem = withClass(page, "stem").at(0);
    const XmlElement use = withClass(page, "flag").at(flag);
    EXPECT_EQ(use.number("x"), stem.number("x1")) << "flags are at the stem";
    return use.number("y") - stem.number("y2");
  };
  EXPECT_EQ(place(up, 0), 0) << "the first is at the free end";
  EXPECT_EQ(place(down, 0), 0);
  EXPECT_GT(place(up, 1), 0) << "others follow towards the head";
  EXPECT_EQ(place(down, 1), -place(up, 1));
}

TEST(Stems, ManyFlagsHaveALongerStem) {
  const auto length = [](const std::string& duration) {
    const XmlElement stem = withClass(onAStaff("note 1 at 30 height 0 duration " + duration + "\n"), "stem").at(0);
    return stem.number("y1") - stem.number("y2");
  };
  EXPECT_EQ(length("0.25"), length("1"));
  EXPECT_GT(length("0.0625"), length("0.25") + 10);
}

TEST(Beams, JoinTheShortNotesOfABeatAndReplaceTheirFlags) {
  const Elements page = inFourFour(
      "note 1 at 20 height 0 duration 0.5\nnote 1 at 30 height 0 duration 0.5\nnote 1 at 40 height 0 duration 0.5\n"
      "note 1 at 50 height 0 duration 0.5\nnote 1 at 60 height 0 duration 1\nnote 1 at 70 height 0 duration 1\n");
  const auto found = beams(page);
  ASSERT_EQ(found.size(), 2U) << "one for each beat";
  const Elements stems = withClass(page, "stem");
  EXPECT_EQ(found[0].x1, stems.at(0).number("x1"));
  EXPECT_EQ(found[0].x2, stems.at(1).number("x1"));
  EXPECT_EQ(found[1].x1, stems.at(2).number("x1"));
  EXPECT_THAT(flags(page), IsEmpty());
}

TEST(Beams, FollowTheNotesAndEndTheStems) {
  const Elements rising = inFourFour("note 1 at 20 height 0 duration 0.5\nnote 1 at 40 height 3 duration 0.5\n");
  const Beam up = beams(rising).at(0);
  EXPECT_LT(up.y2, up.y1) << "up, as the notes";
  EXPECT_LE(up.y1 - up.y2, 10) << "by a space at most";
  for (const XmlElement& stem : withClass(rising, "stem")) {
    EXPECT_NEAR(stem.number("y2"), up.at(stem.number("x1")), 0.02);
    EXPECT_GE(stem.number("y1") - stem.number("y2"), 28) << "no stem is too short";
  }
  const Elements falling = inFourFour("note 1 at 20 height 9 duration 0.5\nnote 1 at 40 height 6 duration 0.5\n");
  const Beam down = beams(falling).at(0);
  EXPECT_GT(down.y2, down.y1);
  EXPECT_GT(down.y1, withClass(falling, "note").at(0).number("y")) << "below high notes";
  const Beam level =
      beams(inFourFour("note 1 at 20 height 2 duration 0.5\nnote 1 at 40 height 2 duration 0.5\n")).at(0);
  EXPECT_EQ(level.y1, level.y2);
}

TEST(Beams, AreAsManyAsTheFlagsWouldBe) {
  const auto found =
      beams(inFourFour("note 1 at 20 height 0 duration 0.5\nnote 1 at 30 height 0 duration 0.25\n"
                       "note 1 at 40 height 0 duration 0.25\n"));
  ASSERT_EQ(found.size(), 2U);
  EXPECT_LT(found[0].x1, found[1].x1) << "the second beam joins the two sixteenths";
  EXPECT_EQ(found[0].x2, found[1].x2);
  EXPECT_GT(found[1].y1, found[0].y1) << "it is nearer to the heads";
}

TEST(Beams, AShortNoteBesideALongOneHasAStub) {
  const auto found = beams(inFourFour("note 1 at 20 height 0 duration 0.75\nnote 1 at 30 height 0 duration 0.25\n"));
  ASSERT_EQ(found.size(), 2U);
  EXPECT_EQ(found[1].x2, found[0].x2) << "at the stem of the sixteenth";
  EXPECT_GT(found[1].x1, found[0].x1 + 20) << "and not to the other note";
}

TEST(Beams, CompoundBeatsHaveThreeNotes) {
  std::string notes = "timesignature 1 at 9 upper 6 lower 8\nbarline 1 at 100 spans 1\n";
  for (int i = 0; i < 6; ++i) {
    notes += "note 1 at " + std::to_string(20 + 10 * i) + " height 0 duration 0.5\n";
  }
  const Elements page = onAStaff(notes);
  ASSERT_EQ(beams(page).size(), 2U);
  EXPECT_EQ(beams(page)[0].x2, withClass(page, "stem").at(2).number("x1"));
}

TEST(Beams, AnUpbeatEndsWithItsBar) {
  const Elements page = inFourFour(
      "note 1 at 20 height 0 duration 0.5\nnote 1 at 30 height 0 duration 0.5\n"
      "note 1 at 40 height 0 duration 0.5\n");
  ASSERT_EQ(beams(page).size(), 1U);
  EXPECT_EQ(beams(page)[0].x1, withClass(page, "stem").at(1).number("x1")) << "on the last beat";
}

TEST(Beams, RestsBarlinesAndTwoVoicesDivideThem) {
  const std::string first = "note 1 at 20 height 0 duration 0.25\n";
  EXPECT_THAT(beams(inFourFour(first + "rest 1 at 30 duration 0.25\nnote 1 at 40 height 0 duration 0.5\n")), IsEmpty());
  EXPECT_THAT(beams(inFourFour(first + "barline 1 at 30 spans 1\nnote 1 at 40 height 0 duration 0.25\n")), IsEmpty());
  EXPECT_THAT(beams(inFourFour(first + "note 1 at 20 height 8 duration 1\nnote 1 at 30 height 0 duration 0.25\n")),
              IsEmpty());
}

TEST(Beams, ARestBelowANoteIsASecondVoice) {
  EXPECT_THAT(beams(inFourFour("rest 1 at 20 duration 1\nnote 1 at 20 height 0 duration 0.25\n"
                               "note 1 at 30 height 0 duration 0.25\n")),
              IsEmpty());
}

TEST(Beams, ABarlineOfTheStaffBelowDividesThem) {
  const std::string staves = "staff 2 at 0 lines 5\nstaff 1 at 0 lines 5\n";
  const std::string notes = "note 2 at 20 height 0 duration 0.5\nnote 2 at 40 height 0 duration 0.5\n";
  EXPECT_EQ(beams(drawn(staves + notes)).size(), 1U);
  EXPECT_EQ(beams(drawn(staves + notes + "barline 1 at 30 spans 2\n")).size(), 0U);
}

TEST(Labels, NameThePageItsSystemsAndTheirBars) {
  const Elements page = drawn(
      "staff 3 at 0 lines 5\nbarline 3 at 0 spans 1\nbarline 3 at 50 spans 1\nbarline 3 at 51 spans 1\n"
      "barline 3 at 100 spans 1\nstaff 2 at 0 lines 5\nstaff 1 at 0 lines 5\nbarline 1 at 0 spans 2\n"
      "barline 1 at 60 spans 2\nnote 2 at 70 duration 1\n");
  EXPECT_EQ(withClass(page, "pagelabel").at(0).text, "P1.MUS");
  const Elements labels = withClass(page, "systemlabel");
  ASSERT_EQ(labels.size(), 2U);
  EXPECT_EQ(labels[0].text, "system 1, bars 1 to 2") << "a double barline ends one bar";
  EXPECT_EQ(labels[1].text, "system 2, bars 3 to 4") << "music after the last barline is a bar";
  EXPECT_EQ(labels[0].number("x"), 20) << "at the margin";
  EXPECT_LT(labels[0].number("y"), withClass(page, "staffline").at(4).number("y1")) << "above its system";
}

TEST(Labels, ALongNameIsCutAndFitsTheDrawing) {
  const Elements page = elementsOf(pagePicture(itemsOf("staff 1 at 0 lines 5\n"), std::string(300, 'W') + ".MUS"));
  const std::string label = withClass(page, "pagelabel").at(0).text;
  EXPECT_TRUE(label.ends_with("W\xE2\x80\xA6")) << label;
  EXPECT_LT(label.size(), 40U);
  EXPECT_GE(page.at(0).number("width"), 17.0 * 0.9 * static_cast<double>(label.size()));
  EXPECT_EQ(withTag(page, "title").at(0).text.size(), 304U) << "the whole name";
}

}  // namespace
}  // namespace kiv::test
