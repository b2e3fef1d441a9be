#pragma once

#include <string>

#include "diagnostics/layouts.h"

namespace kiv {

/// The layouts in plain words, a few lines for each; one line for a piece that is consistent.
std::string explanation(const Layouts& layouts);

}  // namespace kiv
