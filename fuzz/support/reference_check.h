#pragma once

#include <optional>

#include "fuzz/support/fuzz_host.h"
#include "tests/reference/conversion.h"

namespace kiv::fuzz {

/// Clicks Convert, and lets the reference implementation convert a copy of the same files. Both must leave the same
/// files, show the same messages, and end with the same exit code, which is returned; nullopt when they did not end the
/// program. The tables are those of the reference implementation, for all conversions of one program.
std::optional<int> convertBesideReference(FreshProgram& fresh, reference::Tables& tables);

}  // namespace kiv::fuzz
