#pragma once

#include <string>

namespace kiv::proof {

/// Something that keeps a conversion from being proved.
struct Finding {
  std::string file;  ///< the file that is about
  int item = 0;      ///< the item's number in it; 0 when it is about the file
  std::string what;  ///< in words that go on from the file and the item

  bool operator==(const Finding&) const = default;
};

}  // namespace kiv::proof
