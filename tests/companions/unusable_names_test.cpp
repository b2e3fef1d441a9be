#include "apps/companions/unusable_names.h"

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

TEST(UnusableNames, TwoBackslashesAreTheNetwork) {
  EXPECT_TRUE(isNetworkPath(L"\\\\SERVER\\S\\A1.MUS"));
  EXPECT_TRUE(isNetworkPath(L"C:\\M\\\\A1.MUS"));
  EXPECT_FALSE(isNetworkPath(L"C:\\M\\A1.MUS"));
  EXPECT_FALSE(isNetworkPath(L"C:\\\x8868\\A1.MUS")) << "a character that ends with a backslash in a code page";
  EXPECT_FALSE(isNetworkPath(L""));
}

TEST(UnusableNames, QuestionMarkStandsForAMissingCharacter) {
  EXPECT_TRUE(lacksCharacters(L"C:\\M\\?1.MUS"));
  EXPECT_FALSE(lacksCharacters(L"C:\\M\\A1.MUS"));
}

}  // namespace
}  // namespace kiv::test
