#include "pagetext/page_text.h"

#include <algorithm>
#include <limits>

#include <gtest/gtest.h>

#include "tests/mus/page_bytes.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv {
namespace {

using test::bytes;
using test::Dice;
using test::ExactBytes;
using test::header;
using test::page;
using test::pageOf;
using test::trailer;
using test::wordOfBits;
using test::words;
using test::zeroWords;

constexpr float infinity = std::numeric_limits<float>::infinity();

/// The text of the file gives the file's bytes, and these the same text.
void expectRoundTrip(std::string_view file) {
  const ExactBytes exact(file);
  const std::string text = dumpPage(exact.view());
  const auto built = buildPage(text);
  const auto* error = std::get_if<PageTextError>(&built);
  ASSERT_EQ(error, nullptr) << "line " << error->line << ": " << error->reason << "\n" << text;
  ASSERT_EQ(test::hex(std::get<std::string>(built)), test::hex(file)) << text;
  ASSERT_EQ(dumpPage(std::get<std::string>(built)), text);
}

/// The dump without its comment lines, and without numbers, offsets and the trailer where they only say what is so
/// anyway.
std::string bareDump(std::string_view file) {
  std::string result;
  const std::string text = dumpPage(file);
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = text.find('\n', at);
    std::string line = text.substr(at, end - at);
    at = end + 1;
    const std::size_t offset = line.find('@');
    if (line.starts_with(' ') && offset != std::string::npos) {
      line = line.substr(line.find_first_not_of(' ', line.find(' ', offset)));
    }
    result += line.starts_with('*') || line == "trailer" ? "" : line + "\n";
  }
  return result;
}

/// Takes a page of these items through dump and build. Returns how the dump shows the items.
std::string shown(std::string_view items) {
  const std::string file = pageOf(items);
  expectRoundTrip(file);
  return bareDump(file);
}

/// A text item of staff 1 at position 50: P4 .. P11 are 0; the chunks follow P12 and P13.
std::string textItem(float length, float type, float par12, float par13, std::string_view chunks) {
  return words({length, type, 1, 50}) + zeroWords(8) + words({par12, par13}) + std::string(chunks);
}

// --- the very bytes ---

TEST(PageBytes, OfASmallPage) {
  const std::string file = page(
      "staff 1 at 0 lines 5 instrument 3\n"
      "note 1 at 20.5 height 5\n"
      "countedtext 1 at 65 \"dolce\"\n");
  EXPECT_EQ(test::hex(file), test::hex(bytes("25 00"        // 37 words follow
                                             "00 00 10 41"  // length 9
                                             "00 00 00 41"  // P1  8: a staff
                                             "00 00 80 3F"  // P2  staff 1
                                             "00 00 00 00"  // P3  at 0
                                             "00 00 00 00"  // P4
                                             "00 00 00 00"  // P5
                                             "00 00 00 00"  // P6
                                             "00 00 A0 40"  // P7  5 lines
                                             "00 00 00 00"  // P8
                                             "00 00 40 40"  // P9  instrument 3
                                             "00 00 80 40"  // length 4
                                             "00 00 80 3F"  // P1  1: a note
                                             "00 00 80 3F"  // P2  staff 1
                                             "00 00 A4 41"  // P3  at 20.5
                                             "00 00 A0 40"  // P4  height 5
                                             "00 00 70 41"  // length 15
                                             "00 00 80 41"  // P1  16: a counted text
                                             "00 00 80 3F"  // P2  staff 1
                                             "00 00 82 42"  // P3  at 65
                                             "00 00 00 00"  // P4
                                             "00 00 00 00"  // P5
                                             "00 00 00 00"  // P6
                                             "00 00 00 00"  // P7
                                             "00 00 00 00"  // P8
                                             "00 00 00 00"  // P9
                                             "00 00 00 00"  // P10
                                             "00 00 00 00"  // P11
                                             "00 00 A0 40"  // P12 5 characters
                                             "00 00 00 00"  // P13
                                             "64 6F 6C 63"  // "dolc"
                                             "65 20 20 20"  // "e" and three blanks
                                             "20 20 00 00"  // trailer: two blanks
                                             "00 00 00 00"  // number 0
                                             "00 00 40 40"  // 3
                                             "00 00 00 00"  // inches
                                             "00 00 A0 40"  // 5
                                             "00 3C 1C C6"  // -9999
                                             )));
}

TEST(PageBytes, OfAnEmptyPage) {
  EXPECT_EQ(test::hex(page("")), test::hex(bytes("06 00") + trailer()));
}

TEST(PageBytes, OfEveryNamedType) {
  const std::pair<const char*, std::string> items[] = {
      {"note 2 at 3 height 4 duration 7", words({7, 1, 2, 3, 4, 0, 0, 7})},
      {"rest 2 at 3 height 4 kind 5 form 6 duration 7 cue 13", words({13, 2, 2, 3, 4, 5, 6, 7, 0, 0, 0, 0, 0, 13})},
      {"clef 2 at 3 height 4 kind 5", words({5, 3, 2, 3, 4, 5})},
      {"staff 2 at 3 p4 4 size 5 lines 7 instrument 9 p11 11 p20 20",
       words({20, 8, 2, 3, 4, 5, 0, 7, 0, 9, 0, 11, 0, 0, 0, 0, 0, 0, 0, 0, 20})},
      {"barline 2 at 3 spans 4 kind 5", words({5, 14, 2, 3, 4, 5})},
      {"keysignature 2 at 3 key 5 type 6", words({6, 17, 2, 3, 0, 5, 6})},
      {"timesignature 2 at 3 upper 5 lower 6", words({6, 18, 2, 3, 0, 5, 6})},
      {"shorttext 2 at 3 p4 4 \"mf\"", words({15, 11, 2, 3, 4}) + zeroWords(9) + "mf      "},
      {"text 2 at 3 p13 13 \"Allegro\"",
       words({19, 15, 2, 3}) + zeroWords(9) + words({13}) + "Allegro                 "},
      {"countedtext 2 at 3 \"abcd\"", words({14, 16, 2, 3}) + zeroWords(8) + words({4, 0}) + "abcd"},
      {"countedtext 2 at 3 characters 2 \"abcd\"", words({14, 16, 2, 3}) + zeroWords(8) + words({2, 0}) + "abcd"},
      {"item 4 2 3", words({3, 4, 2, 3})},
  };
  for (const auto& [text, item] : items) {
    EXPECT_EQ(test::hex(page(text)), test::hex(pageOf(item))) << text;
    const std::string bare = bareDump(pageOf(item));
    EXPECT_EQ(bare, std::string(text) + "\n");
    expectRoundTrip(pageOf(item));
  }
}

// --- dump ---

TEST(DumpPage, NumbersTheItemsAndTellsTheirOffsets) {
  const std::string file = pageOf(words({3, 4, 1, 50}) + words({4, 1, 1, 20.5F, 5}));
  EXPECT_EQ(dumpPage(file),
            "* items: 2, words: 15\n"
            "   1 @2       item 4 1 50\n"
            "   2 @18      note 1 at 20.5 height 5\n"
            "   3 @38      trailer\n");
  expectRoundTrip(file);
}

TEST(DumpPage, GivesNumbersMoreRoomThanTheyUsuallyNeed) {
  std::string items;
  for (int i = 1; i <= 10000; ++i) {
    items += words({2, 4, 1});
  }
  const std::string dump = dumpPage(pageOf(items));
  EXPECT_NE(dump.find("\n 999 @11978   item 4 1\n1000 @11990   item 4 1\n"), std::string::npos);
  EXPECT_NE(dump.find("\n10000 @119990  item 4 1\n10001 @120002  trailer\n"), std::string::npos);
}

TEST(DumpPage, TellsWhereAPageIsBroken) {
  const std::string file = pageOf(words({3, 4, 1, 50}) + words({3, 19, 1, 50}));
  EXPECT_EQ(dumpPage(file),
            "* items: 1, words: 14\n"
            "   1 @2       item 4 1 50\n"
            "* structural error at item 2, byte 18; what follows is shown as bytes\n"
            "bytes 00 00 40 40 00 00 98 41 00 00 80 3F 00 00 48 42\n"
            "bytes 20 20 00 00 00 00 00 00 00 00 40 40 00 00 00 00\n"
            "bytes 00 00 A0 40 00 3C 1C C6\n");
  expectRoundTrip(file);
}

TEST(DumpPage, TellsWhereAnItemHasTooManyParameters) {
  const std::string file = header(100) + words({21, 4}) + zeroWords(20);
  EXPECT_TRUE(
      dumpPage(file).starts_with("* items: 0, words: 100\n"
                                 "words 100\n"
                                 "* more than 20 parameters at item 1, byte 2; what follows is shown as bytes\n"
                                 "bytes 00 00 A8 41 00 00 80 40 00"))
      << dumpPage(file);
  expectRoundTrip(file);
}

TEST(DumpPage, OfNothing) {
  EXPECT_EQ(dumpPage(""),
            "* items: 0, words: -1\n"
            "words none\n"
            "* structural error at item 0, byte 0; what follows is shown as bytes\n"
            "trailer none\n");
  expectRoundTrip("");
}

TEST(DumpPage, OfOneByte) {
  EXPECT_EQ(bareDump("A"), "words none\nbytes 41\n");
  expectRoundTrip("A");
}

TEST(DumpPage, OfAHeaderAndNoMore) {
  EXPECT_EQ(bareDump(header(6)), "words 6\ntrailer none\n");
  EXPECT_EQ(bareDump(header(5)), "words 5\ntrailer none\n");
  EXPECT_EQ(bareDump(header(0)), "trailer none\n");
  EXPECT_EQ(bareDump(header(-3)), "words -3\ntrailer none\n");
  for (int count = -7; count < 8; ++count) {
    expectRoundTrip(header(count));
  }
}

TEST(DumpPage, OfATrailerThatIsNotTheUsualOne) {
  const std::string odd = bytes("20 20 00 00  07 00 00 00  00 00 40 40  00 00 80 3F  00 00 A0 40  00 3C 1C C6");
  EXPECT_EQ(bareDump(header(6) + odd),
            "bytes 20 20 00 00 07 00 00 00 00 00 40 40 00 00 80 3F\n"
            "bytes 00 00 A0 40 00 3C 1C C6\n");
  expectRoundTrip(header(6) + odd);
}

TEST(DumpPage, OfATrailerOfFiveWords) {
  EXPECT_EQ(bareDump(header(5) + zeroWords(5)),
            "bytes 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00\n"
            "bytes 00 00 00 00\n");
  expectRoundTrip(header(5) + zeroWords(5));
  expectRoundTrip(header(9) + words({3, 4, 1, 50}) + zeroWords(5));
  expectRoundTrip(header(5) + trailer());
}

TEST(DumpPage, OfBytesBehindTheTrailer) {
  EXPECT_EQ(bareDump(header(6) + trailer() + "xyz"), "words 6\nbytes 78 79 7A\n");
  EXPECT_EQ(bareDump(header(6) + trailer() + "wxyz"), "words 6\nbytes 77 78 79 7A\n");
  expectRoundTrip(header(6) + trailer() + "xyz");
  expectRoundTrip(header(6) + trailer() + trailer());
}

TEST(DumpPage, OfAHeaderThatCountsWrongly) {
  const std::string items = words({3, 4, 1, 50});
  for (int count = -2; count < 20; ++count) {
    expectRoundTrip(header(count) + items + trailer());
  }
  EXPECT_EQ(bareDump(header(9) + items + trailer()), "words 9\nitem 4 1 50\n") << "the trailer of 5 words and one more";
}

// --- items with quirks ---

TEST(QuirkyItem, WithALengthWordThatIsNotWhole) {
  EXPECT_EQ(shown(words({1.5F, 4, 1})), "item 4 1 length 1.5\n");
  EXPECT_EQ(shown(words({3.5F, 1, 1, 50, 7})), "note 1 at 50 height 7 length 3.5\n");
  EXPECT_EQ(shown(textItem(14.25F, 16, 4, 0, "abcd")), "countedtext 1 at 50 \"abcd\" length 14.25\n");
  EXPECT_EQ(shown(textItem(13.51F, 15, 0, 0, "abcd")), "text 1 at 50 \"abcd\" length 13.51\n");
}

TEST(QuirkyItem, WithTrailingZeros) {
  EXPECT_EQ(shown(words({7, 1, 1, 50, 6, 0, 0, 0})), "note 1 at 50 height 6 length 7\n");
  EXPECT_EQ(shown(words({3, 1, 1, 0})), "note 1 at 0 length 3\n");
  EXPECT_EQ(shown(words({2, 1, 1})), "note 1 at 0\n");
  EXPECT_EQ(shown(words({2, 1, 0})), "note 0 at 0\n");
  EXPECT_EQ(shown(words({20, 1}) + zeroWords(19)), "note 0 at 0 length 20\n");
}

TEST(QuirkyItem, WithNegativeZeros) {
  EXPECT_EQ(shown(words({5, 1, -0.0F, -0.0F, -0.0F, 2})), "note -0 at -0 height -0 p5 2\n");
  EXPECT_EQ(shown(words({5, 1, 1, 50, 6, -0.0F})), "note 1 at 50 height 6 p5 -0 length 5\n");
  EXPECT_EQ(shown(words({4, 4, -0.0F, 0, -0.0F})), "item 4 -0 0 -0\n");
  EXPECT_EQ(shown(textItem(14, 15, -0.0F, -0.0F, "abcd")), "text 1 at 50 p12 -0 p13 -0 \"abcd\" length 14\n");
}

TEST(QuirkyItem, WithNumbersThatAreNone) {
  const std::string odd = wordOfBits(0x7FC01234) + wordOfBits(0xFF800001) + wordOfBits(0x7F800001);
  EXPECT_EQ(shown(words({6, 1, infinity, -infinity}) + odd),
            "note 0x7F800000 at 0xFF800000 height 0x7FC01234 p5 0xFF800001 p6 0x7F800001\n");
  EXPECT_EQ(shown(words({4, 4}) + odd), "item 4 0x7FC01234 0xFF800001 0x7F800001\n");
}

TEST(QuirkyItem, WithTheSmallestAndTheLargestNumbers) {
  EXPECT_EQ(shown(words({5, 4, 1E-45F, 1.1754942E-38F, 3.4028235E38F, -0.1F})),
            "item 4 1e-45 1.1754942e-38 3.4028235e+38 -0.1\n");
}

TEST(QuirkyItem, WithATypeThatIsNotWhole) {
  EXPECT_EQ(shown(words({3, 1.5F, 1, 50})), "item 1.5 1 50\n");
  EXPECT_EQ(shown(words({3, 15.000001F, 1, 50})), "item 15.000001 1 50\n");
}

TEST(QuirkyItem, OfAllTwentyParameters) {
  EXPECT_EQ(shown(words({20, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20})),
            "note 2 at 3 height 4 p5 5 p6 6 duration 7 p8 8 p9 9 p10 10 p11 11 p12 12 p13 13 p14 14 p15 15 p16 16 "
            "p17 17 p18 18 p19 19 p20 20\n");
}

TEST(QuirkyItem, WithMoreThanTwentyParameters) {
  for (int count = 21; count < 40; ++count) {
    const std::string item = words({static_cast<float>(count), 4}) + zeroWords(static_cast<std::size_t>(count) - 1);
    EXPECT_TRUE(shown(words({3, 4, 1, 50}) + item).starts_with("item 4 1 50\nbytes ")) << count;
  }
}

TEST(QuirkyItem, OfTextWithThirteenParameters) {
  for (const float type : {11.0F, 15.0F, 16.0F}) {
    expectRoundTrip(pageOf(words({14, type, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}) + "abcd"));
    expectRoundTrip(pageOf(words({14, type}) + "WXYZWXYZWXYZWXYZWXYZWXYZWXYZWXYZWXYZWXYZ" + words({3}) +
                           "\xFF\xFF\xFF\xFF" + "abcd"));
  }
  EXPECT_EQ(shown(textItem(15, 11, 0, 13, "abcdefgh")), "shorttext 1 at 50 p13 13 \"abcdefgh\"\n");
}

// --- texts ---

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

TEST(TextInQuotes, TakesBytesBeyondAsciiAsTheyAre) {
  EXPECT_EQ(page("countedtext 1 at 50 \"\xE4\xC3\xA4\t\"\n"), pageOf(textItem(14, 16, 4, 0, "\xE4\xC3\xA4\t")));
}

TEST(TextInQuotes, TakesHexadecimalDigitsOfEitherCase) {
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

// --- files in disorder ---

TEST(BrokenFile, CutAnywhere) {
  const std::string whole = page(
      "staff 1 at 0 size 2 lines 5 instrument 3\n"
      "shorttext 1 at 60 \"mf\"\n"
      "text 1 at 65 p13 4 \"Allegro\"\n"
      "countedtext 1 at 70 \"Vivo\"\n"
      "item 7 1 2 3 length 3.6\n");
  for (std::size_t size = 0; size <= whole.size(); ++size) {
    ASSERT_NO_FATAL_FAILURE(expectRoundTrip(std::string_view(whole).substr(0, size))) << size << " bytes";
  }
}

TEST(BrokenFile, OfRandomBytes) {
  Dice dice(1);
  for (int round = 0; round < 1000; ++round) {
    std::string file(dice.below(200), '\0');
    for (char& byte : file) {
      byte = static_cast<char>(dice.below(256));
    }
    ASSERT_NO_FATAL_FAILURE(expectRoundTrip(file)) << "round " << round;
  }
}

TEST(BrokenFile, OfItemsOfRandomWords) {
  Dice dice(2);
  for (int round = 0; round < 1000; ++round) {
    std::string items;
    for (std::uint32_t count = dice.below(5); count > 0; --count) {
      const std::uint32_t length = 2 + dice.below(19);
      items += words({static_cast<float>(length), static_cast<float>(1 + dice.below(18))});
      for (std::uint32_t p = 2; p <= length; ++p) {
        items += dice.oneIn(3) ? zeroWords(1) : wordOfBits(dice.below(0xFFFFFFFF));
      }
    }
    ASSERT_NO_FATAL_FAILURE(expectRoundTrip(pageOf(items))) << "round " << round;
  }
}

}  // namespace
}  // namespace kiv
