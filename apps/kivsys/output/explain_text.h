#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

#include "diagnostics/instruments.h"
#include "diagnostics/layouts.h"
#include "platform/machine.h"

namespace kiv {

using SkippedBefore = std::function<std::size_t(std::string_view file)>;

/// The layouts in plain words, a few lines for each, with the names of their instruments; one line for a piece that is
/// consistent. A range of files holds none that was skipped: the function has the number of pages that were skipped
/// before a file.
std::string explanation(Machine& machine, const Layouts& layouts, const InstrumentNames& names,
                        const SkippedBefore& skippedBefore);

}  // namespace kiv
