#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>

#include "base/bytes.h"

namespace kiv {

/// Reads bytes and never leaves them. Beyond the end everything reads as 0, and from then on ok() is false.
class ByteCursor {
 public:
  ByteCursor() = default;
  explicit ByteCursor(std::string_view bytes) : bytes_(bytes) {}

  bool ok() const { return ok_; }
  std::size_t position() const { return position_; }
  std::size_t left() const { return bytes_.size() - position_; }

  /// The word at this distance in bytes, which must be there.
  float floatAhead(std::size_t bytes) const { return floatAt(bytes_, position_ + bytes); }
  /// Skips this number of bytes, which must be there.
  void skip(std::size_t bytes) { position_ += bytes; }

  /// The next count bytes, or as many as are left.
  std::string_view read(std::size_t count) {
    ok_ = ok_ && count <= left();
    const std::string_view next = bytes_.substr(position_, count);
    position_ += next.size();
    return next;
  }

  std::uint32_t readByte() {
    const std::string_view byte = read(1);
    return byte.empty() ? 0 : byteAt(byte, 0);
  }

  /// A little-endian word as a float.
  float readFloat() {
    if (left() >= bytesPerWord) {
      return floatAt(read(bytesPerWord), 0);
    }
    std::string padded(read(bytesPerWord));
    padded.resize(bytesPerWord);
    return floatAt(padded, 0);
  }

  /// The little-endian float at a byte offset. Its four bytes must be there.
  static float floatAt(std::string_view bytes, std::size_t offset) {
    if constexpr (std::endian::native == std::endian::little) {  // not every compiler sees that it is one load
      float number = 0;
      std::memcpy(&number, bytes.data() + offset, bytesPerWord);
      return number;
    }
    return std::bit_cast<float>(byteAt(bytes, offset) | byteAt(bytes, offset + 1) << 8U |
                                byteAt(bytes, offset + 2) << 16U | byteAt(bytes, offset + 3) << 24U);
  }

  /// The bits of the two words at a byte offset, in the machine's byte order: only for comparisons.
  static std::uint64_t twoWordsAt(std::string_view bytes, std::size_t offset) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, bytes.data() + offset, sizeof bits);
    return bits;
  }
  /// Fills the span with the words from a byte offset on, which must be there.
  static void copyFloats(std::string_view bytes, std::size_t offset, std::span<float> to) {
    if constexpr (std::endian::native == std::endian::little) {
      std::memcpy(to.data(), bytes.data() + offset, to.size_bytes());
    } else {
      for (float& number : to) {
        number = floatAt(bytes, offset);
        offset += bytesPerWord;
      }
    }
  }

  /// Fills an array with the words from a byte offset on, and with zeros after this number of them, which must be
  /// there.
  template <std::size_t size>
  static void copyFloats(std::string_view bytes, std::size_t offset, std::size_t count, std::span<float, size> to) {
    if constexpr (std::endian::native == std::endian::little) {
      if (bytes.size() - offset >= size * bytesPerWord) {
        // All of them, as a fixed number of bytes is copied faster.
        std::memcpy(to.data(), bytes.data() + offset, size * bytesPerWord);
        const auto kept = static_cast<std::int32_t>(count);
        for (std::int32_t i = 0; i < static_cast<std::int32_t>(size); ++i) {  // without branches
          float& number = to[static_cast<std::size_t>(i)];
          number = i < kept ? number : 0;
        }
        return;
      }
    }
    copyFloats(bytes, offset, to.first(count));
    std::fill(to.begin() + static_cast<std::ptrdiff_t>(count), to.end(), 0.0F);
  }

  static std::uint32_t byteAt(std::string_view bytes, std::size_t offset) {
    return static_cast<unsigned char>(bytes[offset]);
  }

 private:
  std::string_view bytes_;
  std::size_t position_ = 0;
  bool ok_ = true;
};

}  // namespace kiv
