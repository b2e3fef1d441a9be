#pragma once

#include <bit>
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
    for (std::size_t slot = slotOf(slots_, hash); slots_[slot] != free; slot = (slot + 1) & (slots_.size() - 1)) {
      if (isIt(slots_[slot])) {
        return slots_[slot];
      }
    }
    return std::nullopt;
  }
  /// The number of the thing with this hash that it is. If there is none, keep is called, with which the owner keeps
  /// the thing under the next number; the hashes of those before it may be asked for. When anything throws, keep has
  /// not been called or has failed, and index and owner are as before.
  template <typename IsIt, typename HashOf, typename Keep>
  std::uint32_t findOrAdd(std::size_t hash, IsIt isIt, HashOf hashOf, Keep keep) {
    if (const auto known = find(hash, isIt)) {
      return *known;
    }
    if (std::size_t{4} * (count_ + 1) > 3 * slots_.size()) {
      grow(hashOf);
    }
    keep();
    enter(slots_, hash, count_);
    return count_++;
  }

 private:
  static constexpr std::uint32_t free = UINT32_MAX;
  static constexpr std::size_t fewestSlots = 16;  // a power of two, as all their numbers are

  using Slots = std::vector<std::uint32_t>;

  static std::size_t slotOf(const Slots& slots, std::size_t hash) {
    constexpr std::uint64_t spread = 0x9E3779B97F4A7C15U;  // 2^64 divided by the golden ratio
    // The highest bits of the product are the best ones, as many as the number of a slot has.
    return static_cast<std::size_t>((hash * spread) >> std::countl_zero(std::uint64_t{slots.size()} - 1));
  }
  template <typename HashOf>
  void grow(HashOf hashOf) {
    Slots slots(slots_.empty() ? fewestSlots : 2 * slots_.size(), free);
    for (std::uint32_t number = 0; number < count_; ++number) {
      enter(slots, hashOf(number), number);
    }
    slots_ = std::move(slots);
  }
  static void enter(Slots& slots, std::size_t hash, std::uint32_t number) {
    std::size_t slot = slotOf(slots, hash);
    while (slots[slot] != free) {
      slot = (slot + 1) & (slots.size() - 1);
    }
    slots[slot] = number;
  }

  Slots slots_;
  std::uint32_t count_ = 0;
};

}  // namespace kiv
