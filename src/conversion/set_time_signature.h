#pragma once

#include <cstdint>

#include "conversion/system_page.h"

namespace kiv {

/// Gives the rest staff of the instrument the time signatures of the reference staff.
void setTimeSignature(const SystemPage& page, std::int16_t instrument);

}  // namespace kiv
