#pragma once

#include <string_view>

namespace kiv {

/// Whether a name comes before another one when groups of digits count as numbers: P1, P2, P02, P10. Letters are
/// compared as they are.
bool comesBefore(std::string_view name, std::string_view other);

}  // namespace kiv
