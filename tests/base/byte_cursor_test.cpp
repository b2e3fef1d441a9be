#include "base/byte_cursor.h"

#include <array>
#include <bit>
#include <cstdint>
#include <span>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/mus/page_bytes.h"

namespace kiv {
namespace {

using test::bytes;

TEST(ByteCursor, ReadsFloatsWithTheLowestByteFirst) {
  const std::string content = bytes("00 00 80 3F  00 00 A0 C0");
  ByteCursor cursor(content);
  EXPECT_EQ(cursor.readFloat(), 1.0F);
  EXPECT_EQ(cursor.readFloat(), -5.0F);
  EXPECT_TRUE(cursor.ok()) << "reading up to the end is no reading beyond it";
  EXPECT_EQ(cursor.left(), 0U);
}

TEST(ByteCursor, ReadsBytesAsNumbersFrom0To255) {
  const std::string content = bytes("FF 80 00");
  ByteCursor cursor(content);
  EXPECT_EQ(cursor.readByte(), 255U);
  EXPECT_EQ(cursor.readByte(), 128U);
  EXPECT_EQ(cursor.readByte(), 0U);
  EXPECT_TRUE(cursor.ok());
}

TEST(ByteCursor, ReadsZeroBeyondTheEndAndRemembersIt) {
  const test::ExactBytes content(bytes("07"));
  ByteCursor cursor(content.view());
  EXPECT_EQ(cursor.readByte(), 7U);
  EXPECT_EQ(cursor.readByte(), 0U);
  EXPECT_FALSE(cursor.ok());
  EXPECT_EQ(cursor.read(0), "");
  EXPECT_FALSE(cursor.ok()) << "what was missed stays missed";
  EXPECT_EQ(cursor.position(), 1U);
}

TEST(ByteCursor, FillsACutOffFloatWithZeroBytes) {
  const test::ExactBytes content(bytes("00 00 80"));
  ByteCursor cursor(content.view());
  EXPECT_EQ(cursor.readFloat(), std::bit_cast<float>(0x00800000U));
  EXPECT_FALSE(cursor.ok());
}

TEST(ByteCursor, FillsAnArrayWithWordsAndThenZeros) {
  // Words beyond those that are wanted may be there, or not.
  for (const std::string_view text : {"FF 00 00 80 3F 00 00 C0 7F", "FF 00 00 80 3F 00 00 C0 7F 00 00 00 40",
                                      "FF 00 00 80 3F 00 00 C0 7F 00 00 00 40 00 00 40 40 00 00 80 40"}) {
    const test::ExactBytes content(bytes(text));
    for (const std::size_t count : {0U, 1U, 2U}) {
      std::array<float, 3> numbers = {7, 8, 9};
      ByteCursor::copyFloats(content.view(), 1, count, std::span(numbers));
      const std::array<std::uint32_t, 3> expected = {count > 0 ? 0x3F800000U : 0, count > 1 ? 0x7FC00000U : 0, 0};
      EXPECT_EQ((std::bit_cast<std::array<std::uint32_t, 3>>(numbers)), expected) << text << ", " << count;
    }
  }
}

TEST(ByteCursor, ReadsWhatIsLeft) {
  ByteCursor cursor("ABC");
  EXPECT_EQ(cursor.read(2), "AB");
  EXPECT_TRUE(cursor.ok());
  EXPECT_EQ(cursor.read(2), "C");
  EXPECT_FALSE(cursor.ok());
}

}  // namespace
}  // namespace kiv
