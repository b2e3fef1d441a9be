#pragma once

#include <string>
#include <vector>

#include "verify/music_system.h"

namespace kiv::test {

/// The system of a page text, as the proof reads it. The barlines are those of staff 1.
proof::MusicSystem musicSystemOf(const std::string& text);

/// The same of several.
std::vector<proof::MusicSystem> musicSystemsOf(const std::vector<std::string>& texts);

}  // namespace kiv::test
