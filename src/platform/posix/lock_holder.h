#pragma once

#include <cstdint>
#include <optional>

namespace kiv {

/// The process that has locked a file or folder, given by its device and number; nullopt when that is not known.
std::optional<std::uint64_t> lockHolder(std::uint64_t device, std::uint64_t number);

}  // namespace kiv
