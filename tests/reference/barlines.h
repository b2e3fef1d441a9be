#pragma once

#include "tests/reference/conversion.h"

namespace kiv::reference {

/// Collects the barlines of staff 1, the model of all staves.
void collectBarlines(Conversion& run);
void sortBarlines(BarlineList& list);

/// Discards all barlines and gives every staff those of the model, and the system its own.
void normalizeBarlines(Conversion& run);

/// Remembers the instruments that carry a brace in the system.
void collectBraces(const ItemTable& items, BraceTable& braces);
/// Puts a brace on every staff of these instruments.
void outputBraces(ItemTable& items, const BraceTable& braces);

}  // namespace kiv::reference
