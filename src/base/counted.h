#pragma once

#include <cstddef>
#include <string>

namespace kiv {

/// A count with a word that takes an s in the plural, as "1 page" and "3 pages".
inline std::string counted(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

/// A count with the word for it.
inline std::string counted(std::size_t count, const std::string& one, const std::string& many) {
  return std::to_string(count) + " " + (count == 1 ? one : many);
}

}  // namespace kiv
