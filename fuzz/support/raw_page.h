#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace kiv::fuzz {

/// An item as it is put into a file, valid or not.
struct RawItem {
  std::vector<float> par;  ///< P1, P2 ... as many as are written
  std::string chunks;      ///< of a text item
  float lengthError = 0;   ///< added to the length word
};

/// A page file being made.
struct RawPage {
  std::string name;
  std::vector<RawItem> items;
  int highestStaff = 0;
  int headerError = 0;       ///< added to the number of words
  std::size_t bytesCut = 0;  ///< missing at the end
  std::vector<std::pair<std::size_t, float>>
      changed;  ///< words that are replaced at last, by index modulo their number

  std::string bytes() const;
};

}  // namespace kiv::fuzz
