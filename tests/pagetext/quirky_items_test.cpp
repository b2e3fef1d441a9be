#include <cstddef>
#include <limits>
#include <string>

#include <gtest/gtest.h>

#include "tests/mus/page_bytes.h"
#include "tests/pagetext/page_dump.h"

namespace kiv {
namespace {

using test::expectRoundTrip;
using test::pageOf;
using test::shown;
using test::textItem;
using test::wordOfBits;
using test::words;
using test::zeroWords;

constexpr float infinity = std::numeric_limits<float>::infinity();

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

}  // namespace
}  // namespace kiv
