#pragma once

#include <string>

namespace kiv::proof {

/// A reason why a conversion is not proved.
struct Finding {
  std::string file;  ///< the file that it is about
  int item = 0;      ///< the item's number in the file; 0 for the file as a whole
  std::string what;  ///< a phrase whose subject is the file or the item

  bool operator==(const Finding&) const = default;
};

}  // namespace kiv::proof
