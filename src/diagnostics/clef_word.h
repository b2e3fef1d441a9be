#pragma once

#include <string>

#include "diagnostics/page_staves.h"

namespace kiv {

/// The word for a clef: "treble", "tenor", "kind 5"; one that is moved by other steps has these after it: "treble-2",
/// "kind 5 -2".
std::string clefWord(const ClefForm& clef);

}  // namespace kiv
