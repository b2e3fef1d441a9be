#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kiv {

/// A digest as it is, in half the memory that its digits take.
using Sha256Digest = std::array<unsigned char, 32>;

/// The SHA-256 digest of bytes that come in pieces.
class Sha256 {
 public:
  void update(std::string_view bytes);
  /// The digest of all bytes so far. Nothing may be added afterwards.
  Sha256Digest digest();
  /// The same as 64 lower-case hexadecimal digits.
  std::string hexDigest();

 private:
  static constexpr std::size_t blockBytes = 64;

  void processBlock(const char* block);

  std::array<std::uint32_t, 8> state_ = {0x6A09E667, 0xBB67AE85, 0x3C6EF372, 0xA54FF53A,
                                         0x510E527F, 0x9B05688C, 0x1F83D9AB, 0x5BE0CD19};
  std::array<char, blockBytes> pending_{};
  std::size_t pendingBytes_ = 0;
  std::uint64_t allBytes_ = 0;
};

/// The digest of these bytes as 64 lower-case hexadecimal digits.
std::string sha256(std::string_view bytes);
/// The same as it is.
Sha256Digest sha256Digest(std::string_view bytes);
/// A digest as 64 lower-case hexadecimal digits.
std::string hexDigits(const Sha256Digest& digest);

}  // namespace kiv
