#pragma once

#include <cstddef>

namespace kiv {

/// Whether the system is to fetch a file from the disk while other work is done, as it will be read.
enum class Fetch {
  notWanted,
  wanted,
};

/// Whether the file with this index, of those that will be read one after the other, is to be fetched: as many as fit
/// into any machine's memory.
constexpr Fetch fetchOf(std::size_t index) {
  constexpr std::size_t mostFetched = 1000;
  return index < mostFetched ? Fetch::wanted : Fetch::notWanted;
}

}  // namespace kiv
