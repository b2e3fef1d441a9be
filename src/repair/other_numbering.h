#pragma once

#include <cstddef>
#include <vector>

#include "repair/reference_layout.h"
#include "repair/slot_ids.h"

namespace kiv {

/// Whether most ids of a system that are unknown to the others, or strange in their slots, make sense together: they
/// are a constant number away from the known ones, or rise as these do. Then somebody has numbered the system in
/// another way, or it is of another score, and its ids are no slips.
bool hasOtherNumbering(const CodedGroup& group, const ReferenceLayout& layout,
                       const std::vector<KnownInstrument>& instruments, std::size_t system);

}  // namespace kiv
