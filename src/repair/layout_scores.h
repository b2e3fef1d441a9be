#pragma once

#include <vector>

#include "repair/layout_profile.h"
#include "repair/order_alignment.h"

namespace kiv {

/// How likely a system has a staff in each slot: neither 0 nor 1. Where there are few systems, the other slots count,
/// too.
std::vector<double> presences(const std::vector<LayoutSlot>& slots);
/// The share of staves that are missing because systems are not complete, of all that there would be; slots of few
/// systems aside.
double missingShare(const std::vector<LayoutSlot>& slots);

/// How the staves of a system fit to the slots, by their ids, unless these are not to be trusted, and by their looks;
/// and what it means to leave slots out.
AlignmentScores alignmentScores(const CodedGroup& group, const CodedSystem& system,
                                const std::vector<LayoutSlot>& slots, bool trustsIds = true);

}  // namespace kiv
