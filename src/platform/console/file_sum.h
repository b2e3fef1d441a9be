#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kiv {

/// The length and a checksum of what is in a file, which is not meant against forgery. It does not depend on the pieces
/// in which the bytes are added.
class FileSum {
 public:
  FileSum() { sums_.fill(first); }

  void add(std::string_view bytes);
  /// Bytes so far.
  std::uint64_t size() const { return size_; }
  bool operator==(const FileSum&) const = default;

 private:
  static constexpr std::uint64_t first = 14695981039346656037U;
  static constexpr std::uint64_t prime = 1099511628211U;

  void addWord(std::uint64_t word);
  void addFours(std::string_view& bytes);

  std::uint64_t size_ = 0;
  std::array<std::uint64_t, 4> sums_;  // of every fourth word; that of the next word is the first
  std::uint64_t word_ = 0;             // the bytes after the last whole word
};

}  // namespace kiv
