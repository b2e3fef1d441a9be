#pragma once

#include <set>
#include <string>
#include <vector>

#include "diagnostics/system_facts.h"
#include "messages/message.h"
#include "platform/files.h"

namespace kiv::report {

/// The ids of the instruments that a system has on its page.
std::set<std::int16_t> playingIn(const SystemFact& system);

/// What is wrong, as music, with the results of a conversion of these systems: their names follow from the full one of
/// the first. Nothing is found when one of them cannot be read.
std::vector<Message> resultWarnings(Files& files, const std::string& firstResult,
                                    const std::vector<SystemFact>& systems);

}  // namespace kiv::report
