#pragma once

#include <cstddef>

#include "platform/bounded_file.h"

namespace kiv {

/// What standard input has, if that is no more than this many bytes.
BoundedContent readStandardInput(std::size_t limit);

}  // namespace kiv
