#include "platform/separators.h"

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"

namespace kiv::test {
namespace {

/// A code page in which 0x95 begins a character of two bytes. The second one may be that of a backslash.
class Separators : public ::testing::Test {
 protected:
  Separators() { host.leadBytes = {'\x95'}; }

  FakeHost host;
};

TEST_F(Separators, LastBackslashIsACharacterByItself) {
  EXPECT_EQ(lastBackslash(host, "C:\\A\\B.MUS"), 4U);
  EXPECT_EQ(lastBackslash(host, "C:\\\x95\\\\B\x95\\.MUS"), 5U);
  EXPECT_EQ(lastBackslash(host, "\\"), 0U);
  EXPECT_EQ(lastBackslash(host, "\x95\\"), std::string::npos);
  EXPECT_EQ(lastBackslash(host, "\x95\x95\\"), 2U) << "the second byte begins no other character";
  EXPECT_EQ(lastBackslash(host, "B.MUS"), std::string::npos);
  EXPECT_EQ(lastBackslash(host, ""), std::string::npos);
  EXPECT_EQ(lastBackslash(host, "A\\\x95"), 1U) << "a character that is cut off";
}

TEST_F(Separators, EveryBackslashCountsInACodePageOfSingleBytes) {
  host.leadBytes.clear();
  EXPECT_EQ(lastBackslash(host, "C:\\\x95\\"), 4U);
  EXPECT_TRUE(endsWithBackslash(host, "\x95\\"));
  EXPECT_TRUE(hasTwoBackslashes(host, "\x95\\\\"));
}

TEST_F(Separators, EndIsACharacterByItself) {
  EXPECT_TRUE(endsWithBackslash(host, "C:\\"));
  EXPECT_TRUE(endsWithBackslash(host, "C:\\\x95\\\\"));
  EXPECT_FALSE(endsWithBackslash(host, "C:\\\x95\\"));
  EXPECT_FALSE(endsWithBackslash(host, "C:"));
  EXPECT_FALSE(endsWithBackslash(host, ""));
}

TEST_F(Separators, TwoInARowAreTwoCharacters) {
  EXPECT_TRUE(hasTwoBackslashes(host, "\\\\SERVER\\S"));
  EXPECT_TRUE(hasTwoBackslashes(host, "C:\\\x95\\\\\\A"));
  EXPECT_FALSE(hasTwoBackslashes(host, "C:\\\x95\\\\A.MUS"));
  EXPECT_FALSE(hasTwoBackslashes(host, "C:\\A\\B\\"));
  EXPECT_FALSE(hasTwoBackslashes(host, ""));
}

TEST_F(Separators, OfATypedPathSlashesSeparateToo) {
  EXPECT_TRUE(endsWithSeparator(host, "a/"));
  EXPECT_TRUE(endsWithSeparator(host, "a\\"));
  EXPECT_FALSE(endsWithSeparator(host, "\x95\\"));
  EXPECT_FALSE(endsWithSeparator(host, "a"));
}

TEST_F(Separators, AtTheEndOfAFolderAreLeftOut) {
  EXPECT_EQ(withoutEndSeparators(host, "a/b//"), "a/b");
  EXPECT_EQ(withoutEndSeparators(host, "a\\/\\"), "a");
  EXPECT_EQ(withoutEndSeparators(host, "C:\\A\\"), "C:\\A");
  EXPECT_EQ(withoutEndSeparators(host, "a\x95\\"), "a\x95\\") << "the second byte of a character";
  EXPECT_EQ(withoutEndSeparators(host, "a"), "a");
}

TEST_F(Separators, OfARootStay) {
  EXPECT_EQ(withoutEndSeparators(host, "/"), "/");
  EXPECT_EQ(withoutEndSeparators(host, "//"), "/");
  EXPECT_EQ(withoutEndSeparators(host, "C:\\"), "C:\\");
  EXPECT_EQ(withoutEndSeparators(host, "C:\\\\"), "C:\\");
  EXPECT_EQ(withoutEndSeparators(host, ""), "");
}

}  // namespace
}  // namespace kiv::test
