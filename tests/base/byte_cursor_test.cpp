#include "base/byte_cursor.h"

#include <vector>

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

TEST(ByteCursor, ComparesWordsBitByBit) {
  const test::ExactBytes content(bytes("FF 00 00 80 3F 00 00 00 80"));
  const std::vector<float> same = {1, -0.0F};
  EXPECT_TRUE(ByteCursor::holdsFloats(content.view(), 1, same));
  EXPECT_TRUE(ByteCursor::holdsFloats(content.view(), 9, {}));
  EXPECT_FALSE(ByteCursor::holdsFloats(content.view(), 1, std::vector<float>{1, 0})) << "another zero";
  EXPECT_FALSE(ByteCursor::holdsFloats(content.view(), 1, std::vector<float>{2, -0.0F}));
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
