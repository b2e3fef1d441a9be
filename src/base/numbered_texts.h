#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "base/hash_index.h"

namespace kiv {

/// Different texts, numbered 0, 1, 2 ..., all together shorter than 2 GB. There can be very many, so each takes few
/// bytes beside its characters.
class NumberedTexts {
 public:
  /// The number of the text, which is added when it is new. Throws std::length_error when they take too much.
  std::uint32_t add(std::string_view text);
  std::optional<std::uint32_t> find(std::string_view text) const;
  /// Valid as long as the table, also after it was moved.
  std::string_view operator[](std::uint32_t number) const;
  std::size_t size() const { return positions_.size(); }

 private:
  std::uint32_t keep(std::string_view text);
  void addBlocks(std::size_t count);

  // Each text follows its length. Blocks have one size, so a block is found by division. One that is longer, for a
  // single text, counts as several, of which those after the first are null.
  std::vector<std::unique_ptr<char[]>> blocks_;  // NOLINT(modernize-avoid-c-arrays): as large as each must be
  std::size_t end_ = 0;                          // the position after the last text
  std::size_t freeBytes_ = 0;                    // after it, in its block
  std::vector<std::uint32_t> positions_;         // of the texts
  HashIndex index_;
};

}  // namespace kiv
