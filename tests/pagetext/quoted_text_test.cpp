#include <algorithm>
#include <cstddef>
#include <string>

#include <gtest/gtest.h>

#include "tests/mus/page_bytes.h"
#include "tests/pagetext/page_dump.h"
#include "tests/support/pages.h"

namespace kiv {
namespace {

using test::bytes;
using test::expectRoundTrip;
using test::header;
using test::page;
using test::pageOf;
using test::shown;
using test::textItem;
using test::trailer;
using test::words;

TEST(TextInQuotes, EscapesWhatIsNotPlainAscii) {
  EXPECT_EQ(shown(textItem(14, 15, 0, 0, "\"\\ab")), "text 1 at 50 \"\\\"\\\\ab\" length 14\n");
  EXPECT_EQ(shown(textItem(14, 15, 0, 0, bytes("E4 00 0A 7F"))), "text 1 at 50 \"\\xE4\\x00\\x0A\\x7F\" length 14\n");
  EXPECT_EQ(shown(textItem(14, 16, 4, 0, "*@~ ")), "countedtext 1 at 50 \"*@~ \"\n");
}

TEST(TextInQuotes, OfEveryByte) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) {
    all.push_back(static_cast<char>(byte));
  }
  const float length = 13 + 256 / 4;
  expectRoundTrip(pageOf(textItem(length, 15, 0, 0, all)));
  expectRoundTrip(pageOf(textItem(length, 11, 0, 0, all)));
  expectRoundTrip(pageOf(textItem(length, 16, 200, 0, all)));
}

TEST(TextInQuotes, AcceptsBytesBeyondAsciiAsTheyAre) {
  EXPECT_EQ(page("countedtext 1 at 50 \"\xE4\xC3\xA4\t\"\n"), pageOf(textItem(14, 16, 4, 0, "\xE4\xC3\xA4\t")));
}

TEST(TextInQuotes, AcceptsHexadecimalDigitsOfEitherCase) {
  EXPECT_EQ(page("countedtext 1 at 50 \"\\xe4\\xE4\\xaF\\xFa\""), pageOf(textItem(14, 16, 4, 0, "\xE4\xE4\xAF\xFA")));
}

TEST(TextInQuotes, OfNothingButBlanks) {
  EXPECT_EQ(shown(textItem(15, 11, 0, 0, std::string(8, ' '))), "shorttext 1 at 50 \"\"\n");
  EXPECT_EQ(shown(textItem(14, 11, 0, 0, std::string(4, ' '))), "shorttext 1 at 50 \"\" length 14\n");
  EXPECT_EQ(shown(textItem(19, 15, 0, 0, std::string(24, ' '))), "text 1 at 50 \"\"\n");
  EXPECT_EQ(shown(textItem(20, 15, 0, 0, std::string(28, ' '))), "text 1 at 50 \"\" length 20\n");
  EXPECT_EQ(shown(textItem(14, 16, 4, 0, std::string(4, ' '))), "countedtext 1 at 50 \"    \"\n");
  EXPECT_EQ(shown(textItem(14, 16, 0, 0, std::string(4, ' '))), "countedtext 1 at 50 \"\" length 14\n");
}

TEST(TextInQuotes, WhoseCountDoesNotFitItsChunks) {
  EXPECT_EQ(shown(textItem(14, 16, 3, 0, "ab  ")), "countedtext 1 at 50 \"ab \"\n");
  EXPECT_EQ(shown(textItem(14, 16, 1, 0, "abcd")), "countedtext 1 at 50 characters 1 \"abcd\"\n");
  EXPECT_EQ(shown(textItem(14, 16, 0, 0, "abcd")), "countedtext 1 at 50 characters 0 \"abcd\"\n");
  EXPECT_EQ(shown(textItem(14, 16, -0.4F, 0, "    ")), "countedtext 1 at 50 characters -0.4 \"\" length 14\n");
  EXPECT_EQ(shown(textItem(14, 16, -0.0F, 0, "    ")), "countedtext 1 at 50 characters -0 \"\" length 14\n");
  EXPECT_EQ(shown(textItem(14, 16, 2.5F, 0, "ab  ")), "countedtext 1 at 50 characters 2.5 \"ab\"\n");
  EXPECT_EQ(shown(textItem(14, 16, 9, 0, "ab  ")), "countedtext 1 at 50 characters 9 \"ab  \"\n");
  EXPECT_EQ(shown(textItem(14, 16, 1E6F, 0, "ab  ")), "countedtext 1 at 50 characters 1e+06 \"ab  \"\n");
  EXPECT_EQ(shown(textItem(15, 16, 2, 0, "ab      ")), "countedtext 1 at 50 \"ab\" length 15\n");
}

TEST(TextInQuotes, FillsItsItemWithBlanks) {
  EXPECT_EQ(page("text 1 at 50 \"ab\" length 15"), pageOf(textItem(15, 15, 0, 0, "ab      ")));
  EXPECT_EQ(page("shorttext 1 at 50 \"abcdefghi\""), pageOf(textItem(16, 11, 0, 0, "abcdefghi   ")));
  EXPECT_EQ(page("countedtext 1 at 50 \"\""), pageOf(textItem(13, 16, 0, 0, "")));
}

/// The item as the writer writes it: a text item is not filled up to whole words beyond its shortest length, and its
/// length word is not rounded.
std::string asWritten(float type, std::string text) {
  const auto characters = static_cast<float>(text.size());
  if (type == 16) {
    text.resize((text.size() + 3) / 4 * 4, ' ');
  } else {
    text.resize(std::max<std::size_t>(text.size(), type == 11 ? 8 : 24), ' ');
  }
  return textItem(static_cast<float>(text.size()) / 4 + 13, type, type == 16 ? characters : 0, 0, text);
}

TEST(TextInQuotes, OfEveryLengthAsTheWriterWritesIt) {
  const std::string note = words({3, 1, 1, 50});
  for (const float type : {11.0F, 15.0F, 16.0F}) {
    for (std::size_t length = 0; length <= 30; ++length) {
      const std::string item = asWritten(type, std::string("abcdefghijklmnopqrstuvwxyzABCD").substr(0, length));
      const int wordCount = static_cast<int>((item.size() + note.size() + 2) / 4) + 6;
      SCOPED_TRACE("type " + std::to_string(type) + ", length " + std::to_string(length));
      ASSERT_NO_FATAL_FAILURE(expectRoundTrip(header(wordCount) + item + note + trailer()));
    }
  }
}

TEST(TextInQuotes, OfAFractionalLengthWordPutsWhatFollowsOutOfStep) {
  const std::string nine = asWritten(11, "abcdefghi");  // length word 15.25, 65 bytes
  const std::string file = header(16 + 4 + 6) + nine + words({3, 1, 1, 50}) + trailer();
  EXPECT_TRUE(
      dumpPage(file).starts_with("* items: 1, words: 26\n"
                                 "words 26\n"
                                 "   1 @2       shorttext 1 at 50 \"abcdefgh\" length 15.25\n"
                                 "* structural error at item 2, byte 66; what follows is shown as bytes\n"
                                 "bytes 69 00 00 40 40 "))
      << dumpPage(file);
  expectRoundTrip(file);
}

}  // namespace
}  // namespace kiv
