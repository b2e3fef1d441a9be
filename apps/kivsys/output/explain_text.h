#pragma once

#include <string>

#include "diagnostics/instruments.h"
#include "diagnostics/layouts.h"
#include "platform/machine.h"

namespace kiv {

/// The layouts in plain words, a few lines for each, with the names of their instruments; one line for a piece that is
/// consistent.
std::string explanation(Machine& machine, const Layouts& layouts, const InstrumentNames& names);

}  // namespace kiv
