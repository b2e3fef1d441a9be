#pragma once

#include <string>

#include "diagnostics/layouts.h"
#include "platform/machine.h"

namespace kiv {

/// The layouts in plain words, a few lines for each; one line for a piece that is consistent.
std::string explanation(Machine& machine, const Layouts& layouts);

}  // namespace kiv
