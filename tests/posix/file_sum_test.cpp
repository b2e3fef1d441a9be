#include "platform/console/file_sum.h"

#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "tests/support/random.h"

namespace kiv::test {
namespace {

FileSum sumOf(std::string_view bytes) {
  FileSum sum;
  sum.add(bytes);
  return sum;
}

std::string anyBytes(RandomGenerator& random, std::size_t count) {
  std::string bytes;
  while (bytes.size() < count) {
    bytes.push_back(static_cast<char>(random.below(256)));
  }
  return bytes;
}

TEST(FileSum, DoesNotDependOnThePieces) {
  RandomGenerator random(3);
  for (std::size_t size = 0; size < 200; ++size) {
    const std::string bytes = anyBytes(random, size);
    FileSum inPieces;
    for (std::string_view left = bytes; !left.empty();) {
      const std::string_view piece = left.substr(0, 1 + random.below(random.oneIn(2) ? 5 : 80));
      inPieces.add(piece);
      inPieces.add("");
      left.remove_prefix(piece.size());
    }
    EXPECT_EQ(inPieces, sumOf(bytes)) << size;
    EXPECT_EQ(inPieces.size(), size);
  }
}

TEST(FileSum, IsAnotherWhenAByteIs) {
  RandomGenerator random(4);
  for (std::size_t size = 1; size < 100; ++size) {
    std::string bytes = anyBytes(random, size);
    const FileSum sum = sumOf(bytes);
    for (char& byte : bytes) {
      byte = static_cast<char>(byte ^ 1);
      EXPECT_NE(sumOf(bytes), sum) << size;
      byte = static_cast<char>(byte ^ 1);
    }
    EXPECT_NE(sumOf(bytes + std::string(1, 0)), sum);
    EXPECT_NE(sumOf(std::string_view(bytes).substr(1)), sum);
  }
}

TEST(FileSum, IsAnotherWhenWordsChangePlaces) {
  const std::string words = "AAAAAAAABBBBBBBBCCCCCCCCDDDDDDDDEEEEEEEE";
  for (std::size_t a = 0; a < words.size(); a += 8) {
    for (std::size_t b = a + 8; b < words.size(); b += 8) {
      std::string exchanged = words;
      exchanged.replace(a, 8, words, b, 8).replace(b, 8, words, a, 8);
      EXPECT_NE(sumOf(exchanged), sumOf(words)) << a << " and " << b;
    }
  }
}

}  // namespace
}  // namespace kiv::test
