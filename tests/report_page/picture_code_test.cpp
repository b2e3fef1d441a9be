#include "report_page/picture_code.h"

#include <cmath>
#include <set>

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
