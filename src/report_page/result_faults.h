#pragma once

#include <string>
#include <vector>

#include "diagnostics/group_facts.h"
#include "music/music_faults.h"
#include "platform/files.h"

namespace kiv::report {

/// What is wrong, as music, with the results of a conversion of the systems of these facts: their names follow from the
/// full one of the first. Nothing is found when one of them cannot be read.
std::vector<MusicFault> resultFaults(Files& files, const std::string& firstResult, const GroupFacts& facts);

}  // namespace kiv::report
