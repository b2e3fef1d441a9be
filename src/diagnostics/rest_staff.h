#pragma once

#include <span>

#include "mus/item_table.h"

namespace kiv {

/// True when a staff holds what a conversion puts on a rest staff and nothing else: at most one clef, 2 to the right of
/// its left end, signatures, barlines, an instrument number, texts left of it, and rests without the form and height
/// that a notation program gives them. The page itself does not mark such staves. A staff without a rest is recognized
/// by the instrument number, if it has that of a conversion.
bool isGeneratedRestStaff(float staffPosition, std::span<const Item> items);

}  // namespace kiv
