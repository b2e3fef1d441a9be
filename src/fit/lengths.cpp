#include "fit/lengths.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace kiv::fit {

bool isSame(double one, double other) {
  return std::abs(one - other) < leastDifference;
}

double asRead(double duration) {
  constexpr double finest = 40320;  // of which the usual tuplets are whole numbers
  return std::round(duration * finest) / finest;
}

double asWritten(double duration) {
  constexpr double rounding = 0.004;
  const double length = asRead(duration);
  for (const double parts : {1, 2, 4, 8, 16, 32, 3, 6, 12, 24, 5, 10, 20, 7, 14}) {
    const double nearest = std::round(length * parts) / parts;
    if (std::abs(nearest - length) < rounding) {
      return nearest;
    }
  }
  constexpr double thousandths = 1000;
  return std::round(length * thousandths) / thousandths;
}

AgreedLength agreedLength(const std::vector<double>& lengths, double inForce) {
  const auto votes = [&](double length) {
    return std::count_if(lengths.begin(), lengths.end(), [&](double other) { return isSame(length, other); });
  };
  const auto all = static_cast<std::ptrdiff_t>(lengths.size());
  if (const auto forTime = votes(inForce); forTime > 0) {
    return {inForce, forTime == all};
  }
  const double commonest = *std::max_element(lengths.begin(), lengths.end(), [&](double one, double other) {
    return std::pair(votes(one), one) < std::pair(votes(other), other);
  });
  return {commonest, votes(commonest) == all};
}

}  // namespace kiv::fit
