#pragma once

#include <cstddef>
#include <cstdint>

namespace kiv::fuzz {

/// Changes a page file in place as a page: whole items are added, removed and exchanged, parameters get values that
/// rules test for, and mostly the header counts the words that there are. Returns the new size, at most maxSize. The
/// same seed makes the same of the same bytes.
std::size_t mutatePage(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed);

}  // namespace kiv::fuzz
