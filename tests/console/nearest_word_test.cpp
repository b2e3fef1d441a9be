#include "apps/kivsys/usage/nearest_word.h"

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(NearestWord, ADistanceCountsInsertedDeletedReplacedAndExchangedLetters) {
  EXPECT_EQ(editDistance("sort", "sort"), 0U);
  EXPECT_EQ(editDistance("sor", "sort"), 1U);
  EXPECT_EQ(editDistance("sorrt", "sort"), 1U);
  EXPECT_EQ(editDistance("sirt", "sort"), 1U);
  EXPECT_EQ(editDistance("srot", "sort"), 1U);
  EXPECT_EQ(editDistance("", "sort"), 4U);
  EXPECT_EQ(editDistance("kitten", "sitting"), 3U);
}

TEST(NearestWord, AThirdOfTheLettersMayBeWrong) {
  const std::vector<std::string> words = {"analyze", "dump", "draw"};
  EXPECT_EQ(nearestWord("analyse", words), "analyze");
  EXPECT_EQ(nearestWord("analisys", words), std::nullopt);
  EXPECT_EQ(nearestWord("damp", words), "dump");
  EXPECT_EQ(nearestWord("dmap", words), std::nullopt);
  EXPECT_EQ(nearestWord("DRAW", words), "draw");
}

TEST(NearestWord, TheFirstOfTheNearestIsTaken) {
  EXPECT_EQ(nearestWord("jsnol", {"jsonl", "json"}), "jsonl");
  EXPECT_EQ(nearestWord("bat", {"cat", "hat"}), "cat");
}

TEST(NearestWord, NoLetterInCommonIsNoSuggestion) {
  EXPECT_EQ(nearestWord("x", {"o", "y"}), std::nullopt);
  EXPECT_EQ(nearestWord(std::string(100000, 'a'), {"analyze"}), std::nullopt);
}

}  // namespace
}  // namespace kiv
