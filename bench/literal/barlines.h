#pragma once

#include "bench/literal/conversion.h"

namespace kiv::literal {

/// Takes the barlines of staff 1 as the model of all staves.
void collectBarlines(Conversion& run);
void sortBarlines(Conversion& run);

/// Discards all barlines and gives every staff those of the model, and the system its own.
void normalizeBarlines(Conversion& run);

/// Remembers the instruments that carry a brace in the system.
void collectBraces(Conversion& run);
/// Puts a brace on every staff of these instruments.
void outputBraces(Conversion& run);

}  // namespace kiv::literal
