#pragma once

#include <cstddef>
#include <string>

#include "tests/support/pages.h"

namespace kiv::test {

/// A page without its end, of which most can be recovered.
inline std::string damagedPage(const std::string& text) {
  constexpr int notes = 40;
  constexpr std::size_t lost = 100;
  std::string all = text;
  for (int position = 1; position <= notes; ++position) {
    all += "note 1 at " + std::to_string(position) + " height 2\n";
  }
  const std::string whole = page(all);
  return whole.substr(0, whole.size() - lost);
}

}  // namespace kiv::test
