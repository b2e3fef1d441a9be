#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include "messages/message.h"
#include "platform/files.h"

namespace kiv {

/// A result of a conversion, to be checked as music.
struct CheckedResult {
  std::string file;                ///< full name
  std::set<std::int16_t> playing;  ///< the instruments that its system had
};

/// Looks in the results of one conversion, which must be all of them in the order of the systems, for rest staves that
/// do not fit the music, and for braces out of their position. Knows nothing of how they were made. A result that
/// cannot be read ends the search. Writes and shows nothing.
std::vector<Message> findMusicWarnings(Files& files, const std::vector<CheckedResult>& results);

}  // namespace kiv
