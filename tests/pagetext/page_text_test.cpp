#include "pagetext/page_text.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include <gtest/gtest.h>

#include "tests/mus/page_bytes.h"
#include "tests/pagetext/page_dump.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv {
namespace {

using test::bareDump;
using test::bytes;
using test::expectRoundTrip;
using test::header;
using test::page;
using test::pageOf;
using test::RandomGenerator;
using test::trailer;
using test::wordOfBits;
using test::words;
using test::zeroWords;

// --- the very bytes ---

// Staff 1 at 0 with 5 lines, instrument 3.
std::string staffBytes() {
  return bytes(
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
  );
}

// A note of staff 1 at 20.5, height 5.
std::string noteBytes() {
  return bytes(
      "00 00 80 40"  // length 4
      "00 00 80 3F"  // P1  1: a note
      "00 00 80 3F"  // P2  staff 1
      "00 00 A4 41"  // P3  at 20.5
      "00 00 A0 40"  // P4  height 5
  );
}

// The counted text "dolce" of staff 1 at 65.
std::string textBytes() {
  return bytes(
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
  );
}

// What ends a page.
std::string trailerBytes() {
  return bytes(
      "20 20 00 00"  // trailer: two blanks
      "00 00 00 00"  // number 0
      "00 00 40 40"  // 3
      "00 00 00 00"  // inches
      "00 00 A0 40"  // 5
      "00 3C 1C C6"  // -9999
  );
}

TEST(PageBytes, HaveTheHeaderAndTheTrailerOfTheTests) {
  EXPECT_EQ(test::hex(header(37)), test::hex(bytes("25 00")));
  EXPECT_EQ(test::hex(trailer()), test::hex(trailerBytes()));
}

TEST(PageBytes, OfAPageOfOneStaff) {
  EXPECT_EQ(test::hex(page("staff 1 at 0 lines 5 instrument 3\n")),
            test::hex(bytes("10 00") + staffBytes() + trailer()));
}

TEST(PageBytes, OfAPageOfOneNote) {
  EXPECT_EQ(test::hex(page("note 1 at 20.5 height 5\n")), test::hex(bytes("0B 00") + noteBytes() + trailer()));
}

TEST(PageBytes, OfAPageOfOneText) {
  EXPECT_EQ(test::hex(page("countedtext 1 at 65 \"dolce\"\n")), test::hex(bytes("16 00") + textBytes() + trailer()));
}

TEST(PageBytes, OfASmallPage) {
  const std::string file = page(
      "staff 1 at 0 lines 5 instrument 3\n"
      "note 1 at 20.5 height 5\n"
      "countedtext 1 at 65 \"dolce\"\n");
  EXPECT_EQ(test::hex(file), test::hex(header(37) + staffBytes() + noteBytes() + textBytes() + trailerBytes()));
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

TEST(DumpPage, NumbersTheItemsAndPrintsTheirOffsets) {
  const std::string file = pageOf(words({3, 4, 1, 50}) + words({4, 1, 1, 20.5F, 5}));
  EXPECT_EQ(dumpPage(file),
            "* items: 2, words: 15\n"
            "   1 @2       item 4 1 50\n"
            "   2 @18      note 1 at 20.5 height 5\n"
            "   3 @38      trailer\n");
  expectRoundTrip(file);
}

TEST(DumpPage, AlignsNumbersInWideColumns) {
  std::string items;
  for (int i = 1; i <= 10000; ++i) {
    items += words({2, 4, 1});
  }
  const std::string dump = dumpPage(pageOf(items));
  EXPECT_NE(dump.find("\n 999 @11978   item 4 1\n1000 @11990   item 4 1\n"), std::string::npos);
  EXPECT_NE(dump.find("\n10000 @119990  item 4 1\n10001 @120002  trailer\n"), std::string::npos);
}

TEST(DumpPage, ShowsWhereAPageIsBroken) {
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

TEST(DumpPage, ReportsWhereAnItemHasTooManyParameters) {
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

TEST(DumpPage, OfATrailerThatIsNotTheStandardOne) {
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

TEST(DumpPage, OfBytesAfterTheTrailer) {
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
  RandomGenerator random(1);
  for (int round = 0; round < 1000; ++round) {
    std::string file(random.below(200), '\0');
    for (char& byte : file) {
      byte = static_cast<char>(random.below(256));
    }
    ASSERT_NO_FATAL_FAILURE(expectRoundTrip(file)) << "round " << round;
  }
}

TEST(BrokenFile, OfItemsOfRandomWords) {
  RandomGenerator random(2);
  for (int round = 0; round < 1000; ++round) {
    std::string items;
    for (std::uint32_t count = random.below(5); count > 0; --count) {
      const std::uint32_t length = 2 + random.below(19);
      items += words({static_cast<float>(length), static_cast<float>(1 + random.below(18))});
      for (std::uint32_t p = 2; p <= length; ++p) {
        items += random.oneIn(3) ? zeroWords(1) : wordOfBits(random.below(0xFFFFFFFF));
      }
    }
    ASSERT_NO_FATAL_FAILURE(expectRoundTrip(pageOf(items))) << "round " << round;
  }
}

}  // namespace
}  // namespace kiv
