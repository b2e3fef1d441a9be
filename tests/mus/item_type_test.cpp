#include "mus/item_type.h"

#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "mus/item.h"

namespace kiv {
namespace {

const ItemType namedTypes[] = {
    ItemType::note,          ItemType::rest,    ItemType::clef, ItemType::staff,       ItemType::instrumentNumber,
    ItemType::shortText,     ItemType::barline, ItemType::text, ItemType::countedText, ItemType::keySignature,
    ItemType::timeSignature, ItemType::deleted};

TEST(ItemType, OfEachNameHasItsNumber) {
  const std::pair<ItemType, float> numbers[] = {{ItemType::note, 1.0F},
                                                {ItemType::rest, 2.0F},
                                                {ItemType::clef, 3.0F},
                                                {ItemType::staff, 8.0F},
                                                {ItemType::instrumentNumber, 10.0F},
                                                {ItemType::shortText, 11.0F},
                                                {ItemType::barline, 14.0F},
                                                {ItemType::text, 15.0F},
                                                {ItemType::countedText, 16.0F},
                                                {ItemType::keySignature, 17.0F},
                                                {ItemType::timeSignature, 18.0F},
                                                {ItemType::deleted, 999.0F}};
  for (const auto& [type, number] : numbers) {
    EXPECT_EQ(type.number(), number);
    EXPECT_EQ(type, ItemType(number));
  }
}

TEST(ItemType, ThatIsNotWholeEqualsNoneOfThem) {
  for (const float number : {8.25F, 7.9999995F, 0.5F, 18.5F, std::numeric_limits<float>::quiet_NaN()}) {
    for (const ItemType type : namedTypes) {
      EXPECT_NE(ItemType(number), type) << number;
    }
  }
  EXPECT_EQ(ItemType(8.25F), ItemType(8.25F)) << "it has a type of its own";
}

TEST(ItemType, KeepsTheNumberOfTheFile) {
  EXPECT_EQ(ItemType(8.25F).number(), 8.25F);
  EXPECT_TRUE(std::signbit(ItemType(-0.0F).number()));
}

TEST(ItemType, HasATextForThreeOfThem) {
  for (const ItemType type : namedTypes) {
    const bool expected = type == ItemType::shortText || type == ItemType::text || type == ItemType::countedText;
    EXPECT_EQ(type.hasText(), expected) << type.number();
  }
  EXPECT_FALSE(ItemType(15.5F).hasText());
}

TEST(TypeSet, ContainsTheTypesItWasMadeOf) {
  constexpr TypeSet ends{ItemType::note, ItemType::staff, ItemType::timeSignature};
  EXPECT_TRUE(ends.contains(ItemType::note));
  EXPECT_TRUE(ends.contains(ItemType::staff));
  EXPECT_TRUE(ends.contains(ItemType::timeSignature));
  for (const ItemType type : {ItemType::rest, ItemType::clef, ItemType::text, ItemType(7), ItemType(9)}) {
    EXPECT_FALSE(ends.contains(type)) << type.number();
  }
}

TEST(TypeSet, ContainsNoTypeThatIsNotWhole) {
  constexpr TypeSet staves{ItemType::staff};
  EXPECT_FALSE(staves.contains(ItemType(8.25F)));
  EXPECT_FALSE(staves.contains(ItemType(7.9999995F)));
}

TEST(TypeSet, OfNothingContainsNothing) {
  constexpr TypeSet nothing{};
  for (float number = lowestItemType; number <= highestItemType; ++number) {
    EXPECT_FALSE(nothing.contains(ItemType(number))) << number;
  }
}

// --- the item itself ---

TEST(Item, BeginsWithAllParametersZero) {
  const Item item;
  for (int p = 1; p <= parameterCount; ++p) {
    EXPECT_EQ(item[p], 0) << "P" << p;
  }
  EXPECT_EQ(item.text, "");
  EXPECT_EQ(item.type(), ItemType(0));
}

TEST(Item, OfATypeHasItsStaffAndPosition) {
  const Item item(ItemType::clef, 3, 12.5F);
  EXPECT_EQ(item.type(), ItemType::clef);
  EXPECT_EQ(item[par::type], 3);
  EXPECT_EQ(item[par::staff], 3);
  EXPECT_EQ(item[par::position], 12.5F);
  EXPECT_EQ(item[par::height], 0);
}

TEST(Item, CanChangeItsType) {
  Item item(ItemType::clef, 3, 12.5F);
  item.setType(ItemType::deleted);
  EXPECT_EQ(item[1], 999);
  EXPECT_EQ(item.type(), ItemType::deleted);
}

TEST(Item, HasItsParametersInARow) {
  Item item;
  item.parameters()[0] = 8;
  item.parameters()[19] = 1;
  EXPECT_EQ(item[1], 8);
  EXPECT_EQ(item[20], 1);
  EXPECT_EQ(item.parameters().size(), 20U);
}

TEST(Item, EqualsAnotherOfTheSameParametersAndText) {
  Item item(ItemType::clef, 3, 12.5F);
  Item other = item;
  EXPECT_EQ(item, other);
  other[20] = 1;
  EXPECT_NE(item, other);
  other = item;
  other.text = "x";
  EXPECT_NE(item, other);
}

}  // namespace
}  // namespace kiv
