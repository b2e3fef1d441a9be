#include "base/sha256.h"

#include <random>

#include <gtest/gtest.h>

#include "base/sha256_block.h"

namespace kiv {
namespace {

// The vectors that the standard itself publishes.

TEST(Sha256, OfNothing) {
  EXPECT_EQ(sha256(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST(Sha256, OfOneBlock) {
  EXPECT_EQ(sha256("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
}

TEST(Sha256, OfTwoBlocks) {
  EXPECT_EQ(sha256("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
            "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
  EXPECT_EQ(sha256("abcdefghbcdefghicdefghijdefghijkefghijklfghijklmghijklmnhijklmnoijklmnopjklmnopqklmnopqrlmnopqrs"
                   "mnopqrstnopqrstu"),
            "cf5b16a778af8380036ce59e7b0492370b249b11e8f07a51afac45037afee9d1");
}

TEST(Sha256, OfAMillionLetters) {
  EXPECT_EQ(sha256(std::string(1000000, 'a')), "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(Sha256, PiecesOfAnySizeGiveTheDigestOfTheWhole) {
  const std::string bytes(200, 'x');
  for (std::size_t cut = 0; cut <= bytes.size(); ++cut) {
    Sha256 digest;
    digest.update(std::string_view(bytes).substr(0, cut));
    digest.update(std::string_view(bytes).substr(cut));
    EXPECT_EQ(digest.hexDigest(), sha256(bytes)) << cut;
  }
}

TEST(Sha256, InstructionsForItAndPortableCodeAgreeOnAnyBytes) {
  if (!hasSha256Instructions()) {
    GTEST_SKIP() << "this processor has no such instructions";
  }
  std::mt19937 random(1);
  Sha256State portable{};
  Sha256State fast{};
  for (int round = 0; round < 2000; ++round) {
    std::string block(64 + 3, '\0');  // at any address
    for (char& byte : block) {
      byte = static_cast<char>(random());
    }
    const char* begin = block.data() + random() % 4;
    addBlockPortably(portable, begin);
    addBlockByInstructions(fast, begin);
    ASSERT_EQ(fast, portable) << round;
  }
}

/// The digest by the portable code alone.
std::string portableDigest(std::string bytes) {
  const std::uint64_t bits = 8 * bytes.size();
  bytes += '\x80';
  while (bytes.size() % 64 != 56) {
    bytes += '\0';
  }
  for (int shift = 56; shift >= 0; shift -= 8) {
    bytes += static_cast<char>(bits >> static_cast<unsigned>(shift) & 0xFFU);
  }
  Sha256State state = {0x6A09E667, 0xBB67AE85, 0x3C6EF372, 0xA54FF53A, 0x510E527F, 0x9B05688C, 0x1F83D9AB, 0x5BE0CD19};
  for (std::size_t block = 0; block < bytes.size(); block += 64) {
    addBlockPortably(state, bytes.data() + block);
  }
  std::string hex;
  for (const std::uint32_t word : state) {
    for (int shift = 28; shift >= 0; shift -= 4) {
      hex += "0123456789abcdef"[word >> static_cast<unsigned>(shift) & 0xFU];
    }
  }
  return hex;
}

TEST(Sha256, OfAnyLengthIsTheOneOfThePortableCode) {
  std::mt19937 random(2);
  for (int round = 0; round < 300; ++round) {
    std::string bytes(random() % 1000, '\0');
    for (char& byte : bytes) {
      byte = static_cast<char>(random());
    }
    ASSERT_EQ(sha256(bytes), portableDigest(bytes)) << bytes.size();
  }
}

// Made with sha256sum: the lengths around the end of a block, where the padding continues in another one.
TEST(Sha256, PaddingFillsTheBlockOrNeedsAnother) {
  EXPECT_EQ(sha256(std::string(55, 'a')), "9f4390f8d30c2dd92ec9f095b65e2b9ae9b0a925a5258e241c9f1e910f734318");
  EXPECT_EQ(sha256(std::string(56, 'a')), "b35439a4ac6f0948b6d6f9e3c6af0f5f590ce20f1bde7090ef7970686ec6738a");
  EXPECT_EQ(sha256(std::string(63, 'a')), "7d3e74a05d7db15bce4ad9ec0658ea98e3f06eeecf16b4c6fff2da457ddc2f34");
  EXPECT_EQ(sha256(std::string(64, 'a')), "ffe054fe7ae0cb6dc65c3af9b61d5209f439851db43d0ba5997337df154668eb");
}

}  // namespace
}  // namespace kiv
