#include "platform/console/file_sum.h"

#include <algorithm>
#include <cstring>

namespace kiv {

void FileSum::add(std::string_view bytes) {
  // Whole words at offsets that do not depend on the pieces.
  const std::size_t at = size_ % sizeof(word_);
  size_ += bytes.size();
  if (at != 0) {
    const std::size_t count = std::min(bytes.size(), sizeof(word_) - at);
    std::memcpy(reinterpret_cast<char*>(&word_) + at, bytes.data(), count);
    bytes.remove_prefix(count);
    if (at + count < sizeof(word_)) {
      return;
    }
    addWord(word_);
  }
  addFours(bytes);
  for (; bytes.size() >= sizeof(word_); bytes.remove_prefix(sizeof(word_))) {
    std::memcpy(&word_, bytes.data(), sizeof(word_));
    addWord(word_);
  }
  word_ = 0;
  std::memcpy(&word_, bytes.data(), bytes.size());
}

void FileSum::addWord(std::uint64_t word) {
  sums_[0] = (sums_[0] ^ word) * prime;
  std::rotate(sums_.begin(), sums_.begin() + 1, sums_.end());
}

/// Consumes whole fours of words: no sum of a four waits for another.
void FileSum::addFours(std::string_view& bytes) {
  std::array<std::uint64_t, 4> sums = sums_;
  std::array<std::uint64_t, 4> words{};
  for (; bytes.size() >= sizeof(words); bytes.remove_prefix(sizeof(words))) {
    std::memcpy(words.data(), bytes.data(), sizeof(words));
    for (std::size_t i = 0; i < words.size(); ++i) {
      sums[i] = (sums[i] ^ words[i]) * prime;
    }
  }
  sums_ = sums;
}

}  // namespace kiv
