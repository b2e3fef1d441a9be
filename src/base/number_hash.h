#pragma once

#include <cstddef>

namespace kiv {

/// The hash of several whole numbers, which depends on their order.
class NumberHash {
 public:
  template <typename Number>
  NumberHash& add(Number number) {
    constexpr std::size_t prime = 1000003;
    value_ = value_ * prime + static_cast<std::size_t>(number);
    return *this;
  }
  template <typename Numbers>
  NumberHash& addAll(const Numbers& numbers) {
    for (const auto number : numbers) {
      add(number);
    }
    return *this;
  }
  std::size_t value() const { return value_; }

 private:
  std::size_t value_ = 0;
};

}  // namespace kiv
