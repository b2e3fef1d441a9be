#pragma once

#include <string_view>

namespace kiv::fuzz {

/// Ends the process, so that the fuzzer keeps the input, when something does not hold that always must.
void expect(bool holds, std::string_view what);

}  // namespace kiv::fuzz
