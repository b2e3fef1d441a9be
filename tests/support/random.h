#pragma once

#include <cstddef>
#include <cstdint>
#include <random>

namespace kiv::test {

/// Random numbers that are the same in every run and on every platform.
class RandomGenerator {
 public:
  explicit RandomGenerator(std::uint32_t seed) : engine_(seed) {}

  /// 0 .. limit - 1
  std::uint32_t below(std::size_t limit) { return static_cast<std::uint32_t>(engine_() % limit); }
  bool oneIn(std::size_t chances) { return below(chances) == 0; }

 private:
  std::mt19937 engine_;
};

}  // namespace kiv::test
