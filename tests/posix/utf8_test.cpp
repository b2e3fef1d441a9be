#include "platform/posix/utf8.h"

#include <string>
#include <utility>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

using namespace std::string_literals;

TEST(UpperCaseUtf8, KnownTexts) {
  const std::pair<const char*, const char*> texts[] = {
      {"", ""},
      {"abcxyz", "ABCXYZ"},
      {"C:\\Music\\a 1-b_$.mus", "C:\\MUSIC\\A 1-B_$.MUS"},
      {"@[`{|}~", "@[`{|}~"},
      {"äöüéàçñåø", "ÄÖÜÉÀÇÑÅØ"},
      {"ÄÖÜÉ", "ÄÖÜÉ"},
      {"ÿžšœ", "ŸŽŠŒ"},
      {"straße", "STRAßE"},
      {"µ×÷°½", "µ×÷°½"},
      {"αβγ", "ΑΒΓ"},
      {"жя", "ЖЯ"},
      {"𐐨", "𐐀"},
      {"日本", "日本"},
      {"𝄞", "𝄞"},
  };
  for (const auto& [text, capitals] : texts) {
    EXPECT_EQ(upperCaseUtf8(text), capitals);
  }
}

TEST(UpperCaseUtf8, LettersWhoseCapitalIsAnothersStay) {
  EXPECT_EQ(upperCaseUtf8("ıſ"), "ıſ");
}

TEST(UpperCaseUtf8, ZeroBytesStay) {
  EXPECT_EQ(upperCaseUtf8("a\0b"s), "A\0B"s);
}

TEST(UpperCaseUtf8, BytesThatAreNoUtf8Stay) {
  const std::string texts[] = {
      "\x80",              // a continuation of nothing
      "\xC3",              // cut before its second byte
      "\xE2\x82",          // cut before its third
      "\xF0\x9D\x84",      // cut before its fourth
      "\xC1\xA1",          // a small a in two bytes
      "\xE0\x81\xA1",      // in three
      "\xF0\x80\x81\xA1",  // in four
      "\xE0\x83\xA4",      // a small a umlaut in three
      "\xED\xA0\x80",      // half of a surrogate pair
      "\xF4\x90\x80\x80",  // after the last code point
      "\xF8\x88\x80\x80\x80",
      "\xFF\xFE",
  };
  for (const std::string& text : texts) {
    EXPECT_EQ(upperCaseUtf8(text), text) << testing::PrintToString(text);
    EXPECT_EQ(upperCaseUtf8("a" + text + "zä"), "A" + text + "ZÄ") << testing::PrintToString(text);
  }
}

TEST(UpperCaseUtf8, ALetterAfterACutOneIsStillUpperCased) {
  EXPECT_EQ(upperCaseUtf8("\xC3"
                          "a\xE2\x82"
                          "b"),
            "\xC3"
            "A\xE2\x82"
            "B");
}

TEST(UpperCaseUtf8, CapitalsHaveNoOtherCapitals) {
  for (unsigned first = 0xC2; first <= 0xDF; ++first) {
    for (unsigned second = 0x80; second <= 0xBF; ++second) {
      const std::string once = upperCaseUtf8(std::string{static_cast<char>(first), static_cast<char>(second)});
      ASSERT_EQ(upperCaseUtf8(once), once);
      ASSERT_EQ(characterCountUtf8(once), 1U) << testing::PrintToString(once);
    }
  }
}

TEST(CharacterCountUtf8, CountsCharacters) {
  const std::pair<std::string, std::size_t> texts[] = {
      {"", 0}, {"abc", 3}, {"äÄé", 3}, {"日本", 2}, {"𝄞a", 2}, {"a\0b"s, 3}, {"a\r\n", 3},
  };
  for (const auto& [text, count] : texts) {
    EXPECT_EQ(characterCountUtf8(text), count) << text;
  }
}

TEST(CharacterCountUtf8, BytesThatAreNoUtf8CountOneEach) {
  const std::pair<std::string, std::size_t> texts[] = {
      {"\x80\x80", 2}, {"\xC3", 1}, {"a\xE2\x82", 3}, {"\xE0\x81\xA1", 3}, {"\xED\xA0\x80", 3}, {"\xF4\x90\x80\x80", 4},
  };
  for (const auto& [text, count] : texts) {
    EXPECT_EQ(characterCountUtf8(text), count) << testing::PrintToString(text);
  }
}

}  // namespace
}  // namespace kiv::test
