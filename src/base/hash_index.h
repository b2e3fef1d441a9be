#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

namespace kiv {

/// Finds things that are numbered 0, 1, 2 ... by their hashes. The things themselves are kept by the owner, and by
/// nobody else: there are very many of them.
class HashIndex {
 public:
  /// The number of the thing with this hash that it is; nullopt for none.
  template <typename IsIt>
  std::optional<std::uint32_t> find(std::size_t hash, IsIt isIt) const {
    if (slots_.empty()) {
      return std::nullopt;
    }
    for (std::size_t slot = slotOf(hash); slots_[slot] != free; slot = (slot + 1) & (slots_.size() - 1)) {
      if (isIt(slots_[slot])) {
        return slots_[slot];
      }
    }
    return std::nullopt;
  }
  /// Adds the thing with the next number. The hashes of those before it may be asked for.
  template <typename HashOf>
  void add(std::size_t hash, HashOf hashOf) {
    if (std::size_t{2} * (count_ + 1) > slots_.size()) {
      grow(hashOf);
    }
    enter(hash, count_++);
  }

 private:
  static constexpr std::uint32_t free = UINT32_MAX;
  static constexpr std::size_t fewestSlots = 16;  // a power of two, as all their numbers are

  std::size_t slotOf(std::size_t hash) const {
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15U;  // 2^64 divided by the golden ratio
    constexpr int half = 32;
    return static_cast<std::size_t>((hash * spread) >> half) & (slots_.size() - 1);
  }
  template <typename HashOf>
  void grow(HashOf hashOf) {
    slots_ = std::vector<std::uint32_t>(slots_.empty() ? fewestSlots : 2 * slots_.size(), free);
    for (std::uint32_t number = 0; number < count_; ++number) {
      enter(hashOf(number), number);
    }
  }
  void enter(std::size_t hash, std::uint32_t number) {
    std::size_t slot = slotOf(hash);
    while (slots_[slot] != free) {
      slot = (slot + 1) & (slots_.size() - 1);
    }
    slots_[slot] = number;
  }

  std::vector<std::uint32_t> slots_;
  std::uint32_t count_ = 0;
};

}  // namespace kiv
