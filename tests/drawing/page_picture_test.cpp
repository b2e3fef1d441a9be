#include "drawing/page_picture.h"

#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/drawing/page_elements.h"

namespace kiv::test {
namespace {

/// A glyph and its position.
struct PlacedGlyph {
  std::string name;
  double x = 0;
  double y = 0;
};

/// The glyphs of a class, in document order.
std::vector<PlacedGlyph> glyphs(const Elements& elements, const std::string& className) {
  std::vector<PlacedGlyph> found;
  for (const XmlElement& use : withClass(elements, className)) {
    found.push_back({use["href"].substr(1), use.number("x"), use.number("y")});
  }
  return found;
}

/// y of a height above the bottom line of the picture's staff, counted from the top.
double heightY(const Elements& elements, double height, std::size_t linesBefore = 0) {
  const double bottom = withClass(elements, "staffline").at(linesBefore).number("y1");
  return bottom - 5 * height;
}

/// x of a position of the picture's first staff, which begins at 0.
double positionX(const Elements& elements, double position) {
  return withClass(elements, "staffline").at(0).number("x1") + 6 * position;
}

TEST(PagePicture, AStaffHasItsLinesATenApart) {
  const Elements page = onAStaff("barline 1 at 100 spans 1\n");
  const Elements lines = withClass(page, "staffline");
  ASSERT_EQ(lines.size(), 5U);
  for (std::size_t i = 1; i < lines.size(); ++i) {
    EXPECT_EQ(lines[i - 1].number("y1") - lines[i].number("y1"), 10);
  }
  EXPECT_EQ(lines[0].number("x2") - lines[0].number("x1"), 600) << "up to the last barline";
  EXPECT_EQ(withClass(drawn("staff 1 at 0 lines 2\n"), "staffline").size(), 2U);
  EXPECT_EQ(withClass(drawn("staff 1 at 0 lines 0\n"), "staffline").size(), 5U);
  EXPECT_EQ(withClass(drawn("staff 1 at 0 lines -1\n"), "staffline").size(), 0U);
}

TEST(PagePicture, StavesAreDrawnFromTheBottomUp) {
  const Elements page = drawn("staff 1 at 0 lines 5 instrument 102\nstaff 2 at 0 lines 5 instrument 101\n");
  const Elements ids = withClass(page, "id");
  ASSERT_EQ(ids.size(), 2U);
  EXPECT_EQ(ids[0].text, "101");
  EXPECT_EQ(ids[1].text, "102");
  EXPECT_LT(ids[0].number("y"), ids[1].number("y"));
}

TEST(PagePicture, ClefsAreOnTheirLines) {
  const Elements page =
      onAStaff("clef 1 at 2\nclef 1 at 20 kind 1\nclef 1 at 40 kind 2\nclef 1 at 60 kind 2 height 2\n");
  const auto clefs = glyphs(page, "clef");
  ASSERT_EQ(clefs.size(), 4U);
  EXPECT_EQ(clefs[0].name, "treble-clef");
  EXPECT_EQ(clefs[0].y, heightY(page, 2)) << "the line of g";
  EXPECT_EQ(clefs[1].name, "bass-clef");
  EXPECT_EQ(clefs[1].y, heightY(page, 6)) << "the line of f";
  EXPECT_EQ(clefs[2].name, "alto-clef");
  EXPECT_EQ(clefs[2].y, heightY(page, 4));
  EXPECT_EQ(clefs[3].y, heightY(page, 6)) << "the line of a tenor clef";
}

TEST(PagePicture, KeysHaveTheirAccidentals) {
  const Elements page = onAStaff("keysignature 1 at 9 key 2 type 1\nkeysignature 1 at 60 key -3\n");
  const auto accidentals = glyphs(page, "accidental");
  ASSERT_EQ(accidentals.size(), 5U);
  EXPECT_EQ(accidentals[0].name, "sharp");
  EXPECT_EQ(accidentals[0].y, heightY(page, 6)) << "f sharp under a bass clef";
  EXPECT_EQ(accidentals[1].y, heightY(page, 3)) << "c sharp";
  EXPECT_EQ(accidentals[2].name, "flat");
  EXPECT_EQ(accidentals[2].y, heightY(page, 4)) << "b flat under a treble clef";
  EXPECT_LT(accidentals[2].x, accidentals[3].x);
}

TEST(PagePicture, TimeSignaturesAreDigitsOrSymbols) {
  const Elements page = onAStaff(
      "timesignature 1 at 17 upper 12 lower 8\ntimesignature 1 at 40 upper 99\ntimesignature 1 at 60 upper 98\n");
  const auto digits = glyphs(page, "digit");
  ASSERT_EQ(digits.size(), 6U);
  EXPECT_EQ(digits[0].name + digits[1].name + digits[2].name, "digit1digit2digit8");
  EXPECT_EQ(digits[0].y, heightY(page, 6));
  EXPECT_EQ(digits[2].y, heightY(page, 2));
  EXPECT_EQ((digits[0].x + digits[1].x) / 2, digits[2].x);
  EXPECT_EQ(digits[3].name, "common-time");
  EXPECT_EQ(digits[4].name + "+" + digits[5].name, "common-time+cut-stroke");
}

TEST(PagePicture, NotesAreAtTheirPositions) {
  const Elements page = onAStaff(
      "note 1 at 30 height 0 duration 1\nnote 1 at 40 height 9 duration 2\nnote 1 at 50 height 4 duration 4\n");
  const auto notes = glyphs(page, "note");
  ASSERT_EQ(notes.size(), 3U);
  EXPECT_EQ(notes[0].name, "black-head");
  EXPECT_EQ(notes[0].x, positionX(page, 30));
  EXPECT_EQ(notes[0].y, heightY(page, 0));
  EXPECT_EQ(notes[1].name, "half-head");
  EXPECT_EQ(notes[2].name, "whole-head");
  const Elements stems = withClass(page, "stem");
  ASSERT_EQ(stems.size(), 2U) << "a whole note has none";
  EXPECT_LT(stems[0].number("y2"), stems[0].number("y1")) << "up from a low note";
  EXPECT_GT(stems[1].number("y2"), stems[1].number("y1")) << "down from a high note";
}

TEST(PagePicture, DotsAreInTheSpaceAboveALine) {
  const Elements page = onAStaff("note 1 at 30 height 0 duration 0.375\n");
  const auto dots = glyphs(page, "dot");
  ASSERT_EQ(dots.size(), 1U);
  EXPECT_EQ(dots[0].y, heightY(page, 1));
}

TEST(PagePicture, NotesOfOnePositionShareAStem) {
  const Elements page = onAStaff("note 1 at 30 height 2 duration 1\nnote 1 at 30 height 5 duration 1\n");
  EXPECT_EQ(withClass(page, "note").size(), 2U);
  EXPECT_EQ(withClass(page, "stem").size(), 1U);
}

TEST(PagePicture, NotesBeyondTheStaffHaveLedgerLines) {
  const Elements page = onAStaff(
      "note 1 at 30 height -4 duration 1\nnote 1 at 40 height 9 duration 1\nnote 1 at 50 height 10 duration 1\n");
  const Elements ledgers = withClass(page, "ledger");
  ASSERT_EQ(ledgers.size(), 3U);
  EXPECT_EQ(ledgers[0].number("y1"), heightY(page, -2));
  EXPECT_EQ(ledgers[1].number("y1"), heightY(page, -4));
  EXPECT_EQ(ledgers[2].number("y1"), heightY(page, 10));
}

TEST(PagePicture, RestsAreInTheMiddle) {
  const Elements page = onAStaff(
      "rest 1 at 30 kind -2 duration 3\nrest 1 at 50 duration 2\nrest 1 at 60 duration 1\nrest 1 at 70 duration 0.25\n"
      "rest 1 at 80 duration 1 height -4 cue 107\n");
  const auto rests = glyphs(page, "rest");
  ASSERT_EQ(rests.size(), 6U);
  EXPECT_EQ(rests[0].name, "whole-rest");
  EXPECT_EQ(rests[0].y, heightY(page, 6)) << "hangs from the fourth line";
  EXPECT_EQ(rests[1].name, "half-rest");
  EXPECT_EQ(rests[1].y, heightY(page, 4)) << "stands on the middle line";
  EXPECT_EQ(rests[2].name, "quarter-rest");
  EXPECT_EQ(rests[3].name + "+" + rests[4].name, "rest-hook+rest-hook");
  EXPECT_EQ(rests[5].y, heightY(page, 0)) << "moved by its height";
  EXPECT_EQ(withClass(page, "cue").at(0).text, "cue 107");
}

TEST(PagePicture, BarlinesCrossTheStavesThatTheySpan) {
  const Elements page = drawn(
      "staff 2 at 0 lines 5\nbarline 2 at 100 spans 1\nstaff 1 at 0 lines 5\nbarline 1 at 0 spans 2\n"
      "barline 1 at 50 spans 0\nbarline 1 at 80 spans 1\n");
  const Elements barlines = withClass(page, "barline");
  ASSERT_EQ(barlines.size(), 4U);
  const double top = heightY(page, 8);
  const double bottom = heightY(page, 0, 5);
  EXPECT_EQ(barlines[0].number("y1"), top);
  EXPECT_EQ(barlines[0].number("y2"), heightY(page, 0));
  EXPECT_EQ(barlines[1].number("y1"), top) << "the system barline";
  EXPECT_EQ(barlines[1].number("y2"), bottom);
  EXPECT_EQ(barlines[2].number("y1"), heightY(page, 8, 5));
  EXPECT_EQ(barlines[3].number("y1"), heightY(page, 8, 5));
  const Elements lines = withClass(page, "staffline");
  EXPECT_EQ(lines.front().number("x2"), lines.back().number("x2")) << "staves of a system end together";
}

TEST(PagePicture, BracesAndBracketsAreShapesOfTheirOwn) {
  const Elements page = drawn(
      "staff 2 at 0 lines 5\nstaff 1 at 0 lines 5\nbarline 1 at 0 spans 2 kind 8\nbarline 1 at 0 spans 2 kind 9\n");
  EXPECT_EQ(withClass(page, "brace").size(), 1U);
  EXPECT_EQ(withClass(page, "bracket").size(), 1U);
  EXPECT_EQ(withClass(page, "barline").size(), 0U);
}

TEST(PagePicture, TextsAreAtTheirHeights) {
  const Elements page = onAStaff(
      "text 1 at 17 p4 14 \"Allegro <assai>\"\nshorttext 1 at 30 p4 -6 \"ff\"\ncountedtext 1 at 2 p4 14 \"92\"\n");
  const XmlElement text = withClass(page, "longtext").at(0);
  EXPECT_EQ(text.text, "Allegro <assai>") << "without the blanks after it";
  EXPECT_EQ(text.number("x"), positionX(page, 17));
  EXPECT_EQ(text.number("y"), heightY(page, 14));
  EXPECT_EQ(withClass(page, "shorttext").at(0).text, "ff");
  EXPECT_EQ(withClass(page, "countedtext").at(0).text, "92");
}

TEST(PagePicture, AnInstrumentNumberReplacesTheId) {
  const Elements ids = withClass(onAStaff("item 10 1 -4 0 7 0.7\n"), "id");
  ASSERT_EQ(ids.size(), 1U);
  EXPECT_EQ(ids[0].text, "7");
}

TEST(PagePicture, RestStavesOfAConversionAreTinted) {
  const std::string rest = "clef 1 at 2\nrest 1 at 28 kind -2 duration 3 p9 -1\n";
  EXPECT_EQ(withTag(withClass(onAStaff(rest), "made"), "rect").size(), 2U) << "the staff, and the legend";
  EXPECT_EQ(withClass(onAStaff(rest + "note 1 at 40 duration 1\n"), "made").size(), 0U);
}

TEST(PagePicture, MarksFrameBarsAndSayWhy) {
  const auto items = itemsOf("staff 1 at 0 lines 5 instrument 101\nbarline 1 at 0 spans 1\nbarline 1 at 50 spans 1\n");
  const PageMark marks[] = {{1, 0, 50, "rest 4, music 3"}, {7, 0, 50, "no such staff"}};
  const Elements page = elementsOf(pagePicture(items, "P1.MUS", marks));
  const Elements frames = withTag(withClass(page, "mark"), "rect");
  ASSERT_EQ(frames.size(), 2U) << "the bar, and the legend";
  const Elements barlines = withClass(page, "barline");
  EXPECT_GT(frames[0].number("x"), barlines.at(0).number("x1"));
  EXPECT_LT(frames[0].number("x") + frames[0].number("width"), barlines.at(1).number("x1"));
  ASSERT_EQ(withClass(page, "says").size(), 1U);
  EXPECT_EQ(withClass(page, "says")[0].text, "rest 4, music 3");
  EXPECT_EQ(withClass(page, "legend").at(0).text, "does not fit the music (lengths in quarters): 1");
}

TEST(PagePicture, UnknownItemsAreMarkedAndListed) {
  const Elements page = onAStaff("item 7 1 20\nitem 7 1 30 4\nclef 1 at 2 kind 5\nnote 9 at 3\n");
  EXPECT_EQ(withClass(page, "unknown").size(), 3U);
  const Elements legend = withClass(page, "legend");
  ASSERT_EQ(legend.size(), 3U);
  EXPECT_EQ(legend[0].text, "clef of kind 5: 1");
  EXPECT_EQ(legend[1].text, "item of type 7: 2");
  EXPECT_EQ(legend[2].text, "items on no staff, not drawn: 1");
  EXPECT_EQ(withClass(onAStaff("note 1 at 3 duration 1\n"), "legend").size(), 0U);
}

TEST(PagePicture, OnlyGlyphsInUseAreDefined) {
  const Elements page = onAStaff("note 1 at 20 duration 1\nnote 1 at 30 duration 1\n");
  ASSERT_EQ(withTag(page, "path").size(), 1U);
  EXPECT_EQ(withTag(page, "path").at(0)["id"], "black-head");
}

TEST(PagePicture, AnEmptyPageIsADrawing) {
  const Elements page = drawn("");
  EXPECT_EQ(page.at(0).name, "svg");
  EXPECT_EQ(withTag(page, "title").at(0).text, "P1.MUS");
}

TEST(PagePicture, IsTheSameEveryTime) {
  const auto items = itemsOf("staff 1 at 0 lines 5\nnote 1 at 0x7FC00000 duration 1\nnote 1 at 3 duration 1\n");
  EXPECT_EQ(pagePicture(items, "x"), pagePicture(items, "x"));
}

}  // namespace
}  // namespace kiv::test
