#pragma once

#include "bench/literal/conversion.h"

namespace kiv::literal {

/// Numbers the staves of the system in the order of their instruments and sorts its items by them.
void sortOnInstrument(Conversion& run);

/// Writes the item table as the current file, in the place of any file of that name.
void writeFile(Conversion& run);

}  // namespace kiv::literal
