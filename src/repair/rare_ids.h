#pragma once

#include <cstddef>
#include <cstdint>

#include "repair/coded_group.h"

namespace kiv {

/// Whether an id of none of the known instruments may be a slip: not if it stands in most of the systems.
bool mayBeSlip(const CodedGroup& group, std::int16_t id);

/// The margin from which an id of a system that is wrong only because it is rare may be replaced by another one; none
/// is enough, it is infinite, if both stand in one system. Higher than elsewhere in a system that has more or fewer
/// staves than the others, whose instruments may be others, too.
double marginForRare(const CodedGroup& group, std::size_t system, std::int16_t id, std::int16_t other);

}  // namespace kiv
