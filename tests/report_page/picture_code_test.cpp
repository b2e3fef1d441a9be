#include "report_page/picture_code.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace kiv::report::test {
namespace {

Item itemOf(ItemType type, float position) {
  return Item(type, 1, position);
}

Item note(float position, float height, float duration) {
  Item item = itemOf(ItemType::note, position);
  item[par::height] = height;
  item[par::duration] = duration;
  return item;
}

std::string codeOf(const std::vector<Item>& items) {
  PlacedStaff staff;
  staff.items = items;
  TextPool texts;
  return staffCode(staff, texts);
}

TEST(PictureCode, TakesFourCharactersForANote) {
  EXPECT_EQ(codeOf({note(10, 3, 1)}).size(), 4U);
  EXPECT_EQ(codeOf({note(10, 3, 1), note(20, 3, 1)}).size(), 8U);
}

TEST(PictureCode, DiffersByPositionHeightAndValue) {
  const std::set<std::string> codes = {codeOf({note(10, 3, 1)}), codeOf({note(11, 3, 1)}), codeOf({note(10, 4, 1)}),
                                       codeOf({note(10, 3, 0.5)}), codeOf({note(10, 3, 1.5)})};
  EXPECT_EQ(codes.size(), 5U);
}

TEST(PictureCode, HasNoCharacterThatNeedsAnEscape) {
  std::vector<Item> items;
  for (float position = -40; position < 410; position += 0.37F) {
    items.push_back(note(position, std::fmod(position, 40.0F), 0.25F));
  }
  EXPECT_EQ(codeOf(items).find_first_of("\"\\<>& "), std::string::npos);
}

TEST(PictureCode, IsTheSameForTheSameItemsOfAnotherStaff) {
  Item other = note(10, 3, 1);
  other[par::staff] = 7;
  EXPECT_EQ(codeOf({note(10, 3, 1)}), codeOf({other}));
}

TEST(PictureCode, StaysBoundedForAnyNumbers) {
  EXPECT_EQ(codeOf({note(NAN, NAN, NAN)}).size(), 4U);
  EXPECT_EQ(codeOf({note(INFINITY, -INFINITY, INFINITY)}).size(), 4U);
  EXPECT_EQ(pixelsAt(1e30F), 2400);
  EXPECT_EQ(pixelsAt(-1e30F), -180);
}

/// A position of 0 is "$:", a height of 0 "=".
TEST(PictureCode, HasACharacterForEachKindOfItem) {
  Item clef = itemOf(ItemType::clef, 0);
  clef[par::kind] = 1;
  clef[par::height] = 2;
  EXPECT_EQ(codeOf({clef}), "Q$:#@");
  Item key = itemOf(ItemType::keySignature, 0);
  key[par::key] = -3;
  key[par::keyType] = 1;
  EXPECT_EQ(codeOf({key}), "R$:($");
  Item barRest = itemOf(ItemType::rest, 0);
  barRest[par::kind] = -2;
  EXPECT_EQ(codeOf({barRest}), "P$:=");
  EXPECT_EQ(codeOf({itemOf(ItemType::barline, 0)}), "");
}

TEST(PictureCode, HasTheNumbersOfTexts) {
  Item time = itemOf(ItemType::timeSignature, 0);
  time[par::upperNumber] = 3;
  time[par::lowerNumber] = 4;
  Item number = itemOf(ItemType::instrumentNumber, 0);
  number[par::shownNumber] = 101;
  Item cue = itemOf(ItemType::rest, 0);
  cue[par::kind] = -2;
  cue[par::cuedInstrument] = 102;
  Item words = itemOf(ItemType::text, 0);
  words[par::height] = 3;
  words.text = "dolce";
  Item oddClef = itemOf(ItemType::clef, 0);
  oddClef[par::kind] = 7;
  PlacedStaff staff;
  staff.items = {time, number, itemOf(ItemType(9), 0), cue, words, oddClef, time};
  TextPool texts;
  EXPECT_EQ(staffCode(staff, texts),
            "S$:!!!"
            "W$:!!#"
            "X$:!!$"
            "P$:="
            "Y$:!!%"
            "U$:!]!!("
            "X$:!!)"
            "S$:!!!");
  std::vector<std::string> known;
  for (std::size_t text = 0; text < texts.texts().size(); ++text) {
    known.emplace_back(texts.texts()[static_cast<std::uint32_t>(text)]);
  }
  EXPECT_EQ(known, (std::vector<std::string>{"3/4", "101", "item of type 9", "cue 102", "dolce", "clef of kind 7"}));
}

TEST(PictureCode, OfBarlinesHasTheStavesThatTheySpan) {
  Item barline = itemOf(ItemType::barline, 0);
  barline[par::spannedStaves] = 2;
  Item brace = barline;
  brace[par::kind] = lowestBraceKind;
  Item bracket = itemOf(ItemType::barline, 0);
  bracket[par::kind] = lowestBraceKind + 1;
  PageLayout layout;
  layout.staves.resize(3);
  for (std::size_t s = 0; s < layout.staves.size(); ++s) {
    layout.staves[s].number = static_cast<float>(s + 1);
  }
  layout.staves[0].items = {barline, note(10, 3, 1), brace, bracket};
  EXPECT_EQ(barlineCode(layout, 0), "Z$:#[$:#]$:!");
  EXPECT_EQ(barlineCode(layout, 1), "");
}

TEST(PictureCode, KeepsTextsOnce) {
  Item text = itemOf(ItemType::text, 10);
  text.text = "dolce   ";
  PlacedStaff staff;
  staff.items = {text, text};
  TextPool texts;
  EXPECT_EQ(staffCode(staff, texts).size(), 16U);
  ASSERT_EQ(texts.texts().size(), 1U);
  EXPECT_EQ(texts.texts()[0], "dolce");
  EXPECT_EQ(texts.bytes(), 5U);
}

}  // namespace
}  // namespace kiv::report::test
