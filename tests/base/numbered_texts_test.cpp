#include "base/numbered_texts.h"

#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(NumberedTexts, NumbersTextsInTheOrderInWhichTheyAreAdded) {
  NumberedTexts texts;
  EXPECT_EQ(texts.add("one"), 0U);
  EXPECT_EQ(texts.add(""), 1U);
  EXPECT_EQ(texts.add("one"), 0U);
  EXPECT_EQ(texts.add("two"), 2U);
  EXPECT_EQ(texts[1], "");
  EXPECT_EQ(texts[2], "two");
  EXPECT_EQ(texts.find("two"), 2U);
  EXPECT_EQ(texts.find("three"), std::nullopt);
  EXPECT_EQ(texts.size(), 3U);
}

TEST(NumberedTexts, KeepsVeryManyAndVeryLongTextsWhereTheyAre) {
  NumberedTexts first;
  const std::string longText(100000, 'x');
  const std::string_view kept = first[first.add(longText)];
  for (std::uint32_t number = 1; number < 5000; ++number) {
    EXPECT_EQ(first.add("text " + std::to_string(number)), number);
  }
  const NumberedTexts moved = std::move(first);
  EXPECT_EQ(kept, longText);
  EXPECT_EQ(moved.find(longText), 0U);
  EXPECT_EQ(moved[4999], "text 4999");
  EXPECT_EQ(moved.find("text 2500"), 2500U);
}

}  // namespace
}  // namespace kiv
