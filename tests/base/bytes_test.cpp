#include "base/bytes.h"

#include <array>
#include <span>
#include <string>

#include <gtest/gtest.h>

#include "tests/mus/page_bytes.h"

namespace kiv {
namespace {

using test::bytes;

TEST(Words, AreWrittenWithTheLowestByteFirst) {
  EXPECT_EQ(wordBytes(1), bytes("00 00 80 3F"));
  EXPECT_EQ(wordBytes(-0.0F), bytes("00 00 00 80"));
}

TEST(Words, AreWrittenOneAfterTheOtherAndNothingElse) {
  std::string place = bytes("FF FF FF FF  FF FF FF FF  FF FF");
  const std::array<float, 2> numbers = {1, -5};
  putWords(std::span<const float, 2>(numbers), place.data() + 1);
  EXPECT_EQ(place, bytes("FF  00 00 80 3F  00 00 A0 C0  FF"));
}

}  // namespace
}  // namespace kiv
