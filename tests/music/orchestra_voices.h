#pragma once

#include <string>

#include "tests/support/random.h"

namespace kiv::test::orchestra {

/// Where the moments of a bar are drawn.
struct Spacing {
  double begin = 0;
  double perQuarter = 12;

  double at(double moment) const { return begin + moment * perQuarter; }
};

/// The number as page text has it.
std::string text(double number);

/// Notes and rests of one to three voices, of which the first lasts as long as the bar and no other lasts longer.
std::string voicesOf(int staff, const Spacing& spacing, double length, RandomGenerator& random);

}  // namespace kiv::test::orchestra
