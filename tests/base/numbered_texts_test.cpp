#include "base/numbered_texts.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

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

TEST(NumberedTexts, KeepsShortTextsBetweenLongOnes) {
  constexpr std::size_t aroundABlock = 4096;
  NumberedTexts texts;
  std::vector<std::string> added;
  for (std::size_t length = aroundABlock - 20; length < aroundABlock + 20; ++length) {
    for (const std::string& text : {"short " + std::to_string(length), std::string(length, 'x'),
                                    std::string(2 * length, 'x'), "after " + std::to_string(length)}) {
      EXPECT_EQ(texts.add(text), added.size());
      added.push_back(text);
    }
  }
  for (std::uint32_t number = 0; number < added.size(); ++number) {
    EXPECT_EQ(texts[number], added[number]);
    EXPECT_EQ(texts.find(added[number]), number);
  }
}

}  // namespace
}  // namespace kiv
