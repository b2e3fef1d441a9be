#include "diagnostics/problem_texts.h"

#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "messages/codes.h"
#include "tests/support/patterns.h"

namespace kiv::test {
namespace {

std::string contentOf(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

std::set<std::string> codesOfTheHeader() {
  return firstGroupsIn(contentOf(std::string(SOURCE_FOLDER) + "/messages/codes.h"), R"(= "([a-z0-9-]+)\")");
}

TEST(ProblemTexts, HaveEveryCodeOnce) {
  std::multiset<std::string> codes;
  for (const ProblemText& text : problemTexts()) {
    codes.emplace(text.code);
  }
  const std::set<std::string> expected = codesOfTheHeader();
  ASSERT_GT(expected.size(), 50U);
  EXPECT_EQ(codes, std::multiset<std::string>(expected.begin(), expected.end()));
}

TEST(ProblemTexts, AreSentencesAndShortTitles) {
  std::vector<ProblemText> texts(problemTexts().begin(), problemTexts().end());
  texts.push_back(problemTextOf(code::subscriptOutOfRange, true));
  for (const ProblemText& text : texts) {
    for (const std::string_view sentence : {text.meaning, text.effect, text.remedy}) {
      EXPECT_TRUE(sentence.ends_with('.')) << text.code << ": " << sentence;
    }
    EXPECT_LE(text.title.size(), 45U) << text.code;
    EXPECT_FALSE(text.title.ends_with('.')) << text.code;
  }
}

TEST(ProblemTexts, AreFoundByTheirCode) {
  EXPECT_EQ(problemTextOf(code::structureError).title, "Damaged page");
  EXPECT_EQ(problemTextOf("a code of tomorrow").code, code::other);
}

TEST(ProblemTexts, OfAnItemThatHoldsTooMuchAreThoseOfDamage) {
  EXPECT_EQ(problemTextOf(code::subscriptOutOfRange).title, "More than the tables hold");
  EXPECT_EQ(problemTextOf(code::subscriptOutOfRange, true).title, "Damaged item");
  EXPECT_EQ(problemTextOf(code::structureError, true).title, "Damaged page");
}

TEST(ProblemTexts, AreTheDocument) {
  EXPECT_EQ(contentOf(std::string(SOURCE_FOLDER) + "/../docs/problems.md"), problemsDocument());
}

}  // namespace
}  // namespace kiv::test
