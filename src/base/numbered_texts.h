#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "base/hash_index.h"

namespace kiv {

/// Different texts, numbered 0, 1, 2 ..., each shorter than 4 GB. There can be very many, so each takes few bytes
/// beside its characters.
class NumberedTexts {
 public:
  /// The number of the text, which is added when it is new.
  std::uint32_t add(std::string_view text);
  std::optional<std::uint32_t> find(std::string_view text) const;
  /// Valid as long as the table, also after it was moved.
  std::string_view operator[](std::uint32_t number) const;
  std::size_t size() const { return texts_.size(); }

 private:
  const char* keep(std::string_view text);

  std::vector<std::unique_ptr<char[]>> blocks_;  // NOLINT(modernize-avoid-c-arrays): as large as each must be
  std::size_t freeBytes_ = 0;                    // at the end of the last block
  char* end_ = nullptr;                          // where they begin
  std::vector<const char*> texts_;               // each after its length
  HashIndex index_;
};

}  // namespace kiv
