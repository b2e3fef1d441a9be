#pragma once

#include <span>

#include "mus/item_table.h"

namespace kiv {

/// True when a staff holds what a conversion puts on a rest staff and nothing else: at most one clef, 2 to the right of
/// its left end, signatures, barlines, an instrument number, texts left of it, and rests without the form and height
/// that a notation program gives them. The page itself does not mark such staves. A staff without a rest is recognized
/// by the instrument number, if it has that of a conversion; one without both may be a bare staff.
bool isGeneratedRestStaff(float staffPosition, std::span<const Item> items);

/// True when a staff has no more than a clef as a conversion writes it, barlines, and perhaps signatures and texts left
/// of it. Beside staves with music it is then a rest staff that got no rest and shows no instrument number.
bool isBareStaff(float staffPosition, std::span<const Item> items);

}  // namespace kiv
