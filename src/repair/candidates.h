#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "mus/item_type.h"

namespace kiv::repair {

/// Bytes that can be read as one whole item.
struct Candidate {
  std::uint32_t start = 0;  ///< offset of the length word
  std::uint32_t end = 0;    ///< offset of the first byte after the item
  ItemType type{0};
  std::int16_t length = 0;  ///< words after the length word
  float staff = 0;          ///< P2

  bool operator==(const Candidate&) const = default;
};

/// The item that a page reader would read at this byte offset; nullopt when it would read none, or one that it does not
/// keep as a whole.
std::optional<Candidate> candidateAt(std::string_view file, std::size_t offset);

/// The item at this offset if its length word said length; nullopt when that would be none.
std::optional<Candidate> candidateOfLength(std::string_view file, std::size_t offset, int length);

/// All items that can be read from the bytes of a damaged page, wherever they begin. They overlap each other.
class Candidates {
 public:
  /// The bytes must outlive it.
  explicit Candidates(std::string_view file);

  std::string_view file() const { return file_; }
  /// In the order of their offsets.
  std::span<const Candidate> all() const { return all_; }
  /// The one that begins at this offset, at most the size of the file; null when none does.
  const Candidate* at(std::size_t offset) const {
    const std::int32_t index = indexes_[offset];
    return index < 0 ? nullptr : &all_[static_cast<std::size_t>(index)];
  }

 private:
  std::string_view file_;
  std::vector<Candidate> all_;
  std::vector<std::int32_t> indexes_;  // by offset; -1 where no item can begin
};

}  // namespace kiv::repair
