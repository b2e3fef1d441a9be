#include "base/shared_lists.h"

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kiv {
namespace {

class SharedListsTest : public ::testing::Test {
 protected:
  std::uint32_t listOf(std::string_view word) {
    std::uint32_t list = SharedLists<char>::emptyList;
    for (const char letter : word) {
      list = lists.append(list, letter);
    }
    return list;
  }
  std::string wordOf(std::uint32_t list) const {
    std::string word;
    for (const char letter : lists.elements(list)) {
      word += letter;
    }
    return word;
  }

  SharedLists<char> lists;
};

TEST_F(SharedListsTest, AListHasTheElementsThatWereAppended) {
  const std::uint32_t part = listOf("part");
  const std::uint32_t party = lists.append(part, 'y');
  EXPECT_EQ(wordOf(party), "party");
  EXPECT_EQ(wordOf(part), "part");
  EXPECT_EQ(wordOf(SharedLists<char>::emptyList), "");
}

TEST_F(SharedListsTest, EqualListsHaveOneNumber) {
  const std::uint32_t tree = listOf("tree");
  EXPECT_NE(listOf("three"), tree);
  EXPECT_NE(listOf("tre"), tree);
  EXPECT_EQ(listOf("tree"), tree);
}

TEST_F(SharedListsTest, WhatListsHaveInCommonIsVisitedOnce) {
  listOf("part");
  listOf("party");
  listOf("pat");
  std::string letters;
  lists.visitAll([&](char letter) { letters += letter; });
  std::ranges::sort(letters);
  EXPECT_EQ(letters, "aprtty") << "part, the y of party, and the t of pat";
}

TEST_F(SharedListsTest, ManyListsStayDifferent) {
  std::mt19937 random(7);
  std::map<std::string, std::uint32_t> known;
  for (int run = 0; run < 3000; ++run) {
    std::string word;
    for (auto length = random() % 8; length > 0; --length) {
      word += static_cast<char>('a' + random() % 4);
    }
    const std::uint32_t list = known.emplace(word, listOf(word)).first->second;
    EXPECT_EQ(listOf(word), list);
    EXPECT_EQ(wordOf(list), word);
  }
}

}  // namespace
}  // namespace kiv
